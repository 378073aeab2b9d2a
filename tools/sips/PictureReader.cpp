#include "tools/sips/PictureReader.h"

#include <QColorSpace>
#include <QImageIOHandler>
#include <QImageReader>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace marrowbeck::tools {

namespace {

/// From here on memory counts for more than the finest scaling.
constexpr qint64 manyPixels = 64'000'000;

/// How much finer than its final size a picture of many pixels is picked before it is smoothed.
constexpr int coarseFactor = 4;

qint64 pixelsOf(QSize size) {
    return qint64{size.width()} * size.height();
}

/// The size within a square of `side`, never larger than it was and never without a pixel.
QSize fitted(QSize size, int side) {
    const int longer = std::max(size.width(), size.height());
    if (longer <= side) return size;
    const auto scaled = [&](int length) {
        return std::max(1, static_cast<int>(std::lround(double{1} * length * side / longer)));
    };
    return {scaled(size.width()), scaled(size.height())};
}

/// Whether the decoder keeps no more than the scaled picture, and scales it well. Where there is
/// an alpha channel Qt's does not: the colours of transparent pixels run into their neighbours.
bool scalesWhileReading(const QImageReader& reader, QSize size) {
    if (reader.format() == "jpeg") return true;
    return reader.format() == "png" && pixelsOf(size) >= manyPixels && reader.imageFormat() == QImage::Format_RGB32;
}

QImage shrunk(QImage image, QSize size) {
    if (image.size() == size) return image;
    // Smoothing wants four bytes a pixel, where the picture may have had one: pick pixels first.
    if (image.depth() < 32 && pixelsOf(image.size()) > manyPixels)
        image = image.scaled(size * coarseFactor, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    // In its own place, where the scaling would do the same with a copy.
    if (image.depth() >= 32 && image.hasAlphaChannel()) {
        image.convertTo(image.depth() == 64 ? QImage::Format_RGBA64_Premultiplied
                                            : QImage::Format_ARGB32_Premultiplied);
    }
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImageIOHandler::Transformations transformationOf(int orientation) {
    switch (orientation) {
        case 2:
            return QImageIOHandler::TransformationMirror;
        case 3:
            return QImageIOHandler::TransformationRotate180;
        case 4:
            return QImageIOHandler::TransformationFlip;
        case 5:
            return QImageIOHandler::TransformationFlipAndRotate90;
        case 6:
            return QImageIOHandler::TransformationRotate90;
        case 7:
            return QImageIOHandler::TransformationMirrorAndRotate90;
        case 8:
            return QImageIOHandler::TransformationRotate270;
        default:
            return QImageIOHandler::TransformationNone;
    }
}

/// Each transformation is a mirroring, a flip, and then a quarter turn clockwise, or some of them.
QImage turned(const QImage& image, QImageIOHandler::Transformations how) {
    const QImage mirrored = image.mirrored(how.testFlag(QImageIOHandler::TransformationMirror),
                                           how.testFlag(QImageIOHandler::TransformationFlip));
    return how.testFlag(QImageIOHandler::TransformationRotate90) ? mirrored.transformed(QTransform().rotate(90))
                                                                 : mirrored;
}

}  // namespace

const char* decoderFor(std::string_view head) {
    struct Signature {
        std::string_view bytes;
        const char* decoder;
    };
    using namespace std::string_view_literals;
    static constexpr Signature signatures[] = {
        {"\xff\xd8\xff"sv, "jpeg"},
        {"\x89PNG\r\n\x1a\n"sv, "png"},
        {"GIF87a"sv, "gif"},
        {"GIF89a"sv, "gif"},
        {"II*\0"sv, "tiff"},
        {"MM\0*"sv, "tiff"},
        {"II+\0"sv, "tiff"},
        {"MM\0+"sv, "tiff"},
        {"BM"sv, "bmp"},
        {"\0\0\1\0"sv, "ico"},
        {"icns"sv, "icns"},
    };
    if (head.starts_with("RIFF") && head.substr(std::min<size_t>(head.size(), 8)).starts_with("WEBP")) return "webp";
    const auto* const found = std::find_if(std::begin(signatures), std::end(signatures),
                                           [head](const Signature& one) { return head.starts_with(one.bytes); });
    return found == std::end(signatures) ? nullptr : found->decoder;
}

QImage readPicture(QIODevice& device, const char* decoder, int longestSide, int orientation) {
    QImageReader::setAllocationLimit(mostDecodedMegabytes);
    QImageReader reader(&device, decoder);
    reader.setAutoDetectImageFormat(false);
    const QSize natural = reader.size();
    if (natural.isValid() && scalesWhileReading(reader, natural)) reader.setScaledSize(fitted(natural, longestSide));
    QImage image = reader.read();
    if (image.isNull()) return {};

    const bool alpha = image.hasAlphaChannel();  // smoothing adds one
    const QColorSpace colours = image.colorSpace();
    const QSize size = fitted(natural.isValid() ? natural : image.size(), longestSide);
    image = shrunk(std::move(image), size);
    image.convertTo(alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image.setColorSpace(colours);
    if (colours.isValid() && colours != QColorSpace(QColorSpace::SRgb))
        image.convertToColorSpace(QColorSpace(QColorSpace::SRgb));
    image.setColorSpace({});

    const QImageIOHandler::Transformations own = reader.transformation();
    return turned(image, own != QImageIOHandler::TransformationNone ? own : transformationOf(orientation));
}

bool isLaidOutWhole(QIODevice& device, const char* decoder) {
    device.seek(0);
    QImageReader reader(&device, decoder);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    return pixelsOf(size) >= manyPixels && !scalesWhileReading(reader, size);
}

int longerSideOf(QIODevice& device, const char* decoder) {
    device.seek(0);
    QImageReader reader(&device, decoder);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    return std::max({size.width(), size.height(), 0});
}

}  // namespace marrowbeck::tools
