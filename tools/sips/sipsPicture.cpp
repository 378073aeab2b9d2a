#include "tools/sips/sipsPicture.h"

#include <QBuffer>
#include <QFile>
#include <string_view>

#include "tools/sips/EmbeddedPreview.h"
#include "tools/service/LostPages.h"
#include "tools/sips/PictureReader.h"
#include "tools/sips/VipsThumbnail.h"

namespace marrowbeck::tools {

namespace {

/// Pixels on the longer side of a thumbnail in Exif: good enough only where there is nothing better.
constexpr int exifThumbnailSide = 160;

QImage readBytes(const std::string& content, int side, int orientation) {
    QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    QBuffer device(&bytes);
    const char* const decoder = decoderFor(content);
    if (decoder == nullptr || !device.open(QIODevice::ReadOnly)) return {};
    return readPicture(device, decoder, side, orientation);
}

/// One file, and the several ways to its picture.
class Source {
  public:
    Source(const InputFile& file, int side) : file_(file), side_(side), head_(file.head(decoderHeadBytes)) {
        const char* const decoder = decoderFor(head_);
        if (decoder == nullptr || !device_.open(file.descriptor(), QIODevice::ReadOnly)) return;
        decoder_ = decoder;
        large_ = isLaidOutWhole(device_, decoder);
    }

    QImage picture() {
        QImage image;
        if (decoder_ == "jpeg") image = decoded();  // its decoder turns it by itself
        if (!image.isNull()) return image;
        embedded_ = embeddedPictures(file_.plainPath(), side_);
        if (!decoder_.isEmpty() && decoder_ != "jpeg" && !isRaw()) image = decoded();
        if (image.isNull() && embedded_.preview.longerSide > exifThumbnailSide) image = preview();
        if (image.isNull()) image = byVips();
        if (image.isNull()) image = preview();
        return image;
    }

  private:
    /// The first page of a raw file is a thumbnail, and the picture proper no ordinary TIFF.
    bool isRaw() { return decoder_ == "tiff" && longerSideOf(device_, "tiff") < embedded_.longerSide; }

    /// Of a large picture vipsthumbnail holds a few lines at a time, where Qt holds the whole.
    QImage decoded() {
        QImage image = large_ ? byVips() : QImage();
        if (!image.isNull() || !device_.seek(0)) return image;
        return readPicture(device_, decoder_.constData(), side_, embedded_.orientation);
    }

    QImage byVips() {
        if (vipsWasTried_) return {};
        vipsWasTried_ = true;
        // Loaders of other formats turn the picture themselves, as their format says.
        const bool jpeg2000 = head_.compare(0, 8, std::string_view("\0\0\0\x0cjP  ", 8)) == 0;
        const bool asExifSays = !decoder_.isEmpty() || jpeg2000 || head_.starts_with("8BPS");
        return readBytes(vipsThumbnail(file_, side_), side_, asExifSays ? embedded_.orientation : 1);
    }

    QImage preview() const { return readBytes(embedded_.preview.content, side_, embedded_.orientation); }

    const InputFile& file_;
    const int side_;
    const std::string head_;
    QFile device_;
    QByteArray decoder_;  ///< empty when Qt has none
    bool large_ = false;
    bool vipsWasTried_ = false;
    EmbeddedPictures embedded_;
};

}  // namespace

QImage sipsPicture(const InputFile& file, int side) {
    const LostPagesReadAsZeros guard;
    return Source(file, side).picture();
}

}  // namespace marrowbeck::tools
