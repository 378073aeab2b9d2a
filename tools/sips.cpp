#include "tools/sips.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <algorithm>
#include <charconv>
#include <optional>

#include "tools/EmbeddedPreview.h"
#include "tools/InputFile.h"
#include "tools/LostPages.h"
#include "tools/PictureReader.h"
#include "tools/ReplacementFile.h"
#include "tools/VipsThumbnail.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: sips -s format png [-Z PIXELS] FILE --out FILE\n";

/// Pixels on the longer side of a thumbnail in Exif: good enough only where there is nothing better.
constexpr int exifThumbnailSide = 160;

struct Request {
    std::string source;
    std::string target;
    int side = largestSide;
    bool png = false;
};

std::optional<int> sideFrom(const std::string& word) {
    int side = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), side);
    if (failure != std::errc() || end != word.data() + word.size() || side < 1) return std::nullopt;
    return std::min(side, largestSide);
}

std::optional<Request> parse(const Arguments& arguments) {
    Request request;
    bool marked = false;  // the next word is the source, whatever it begins with
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const size_t left = arguments.size() - i - 1;
        if (marked || !word.starts_with('-')) {
            if (!request.source.empty() || word.empty()) return std::nullopt;
            request.source = word;
            marked = false;
        } else if (word == "--") {
            marked = true;
        } else if (word == "-s" && left >= 2 && arguments[i + 1] == "format" && arguments[i + 2] == "png") {
            request.png = true;
            i += 2;
        } else if (word == "-Z" && left >= 1) {
            const std::optional<int> side = sideFrom(arguments[++i]);
            if (!side) return std::nullopt;
            request.side = *side;
        } else if (word == "--out" && left >= 1) {
            request.target = arguments[++i];
        } else {
            return std::nullopt;
        }
    }
    if (!request.png || request.source.empty() || request.target.empty()) return std::nullopt;
    return request;
}

QImage readBytes(const std::string& content, int side, int orientation = 1) {
    QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    QBuffer device(&bytes);
    const char* const decoder = decoderFor(content);
    if (decoder == nullptr || !device.open(QIODevice::ReadOnly)) return {};
    return readPicture(device, decoder, side, orientation);
}

/// The picture by whatever means there is, from the best to the least.
QImage read(const InputFile& file, int side) {
    const LostPagesReadAsZeros guard;
    QFile device;
    const char* const decoder = decoderFor(file.head(decoderHeadBytes));
    const bool tiff = decoder != nullptr && std::string_view(decoder) == "tiff";
    const bool opened = decoder != nullptr && device.open(file.descriptor(), QIODevice::ReadOnly);
    if (opened && !tiff) {
        QImage image = readPicture(device, decoder, side);
        if (!image.isNull()) return image;
    }

    const EmbeddedPictures embedded = embeddedPictures(file.plainPath(), side);
    const EmbeddedPreview& preview = embedded.preview;
    // The first page of a raw file is a thumbnail, and the picture proper no ordinary TIFF.
    if (opened && tiff && longerSideOf(device, decoder) >= embedded.longerSide) {
        device.seek(0);
        QImage image = readPicture(device, decoder, side);
        if (!image.isNull()) return image;
    }
    QImage image;
    const auto readPreview = [&] { return readBytes(preview.content, side, preview.orientation); };
    if (preview.longerSide > exifThumbnailSide) image = readPreview();
    if (image.isNull()) image = readBytes(vipsThumbnail(file, side), side);
    if (image.isNull()) image = readPreview();
    return image;
}

}  // namespace

ToolResult sips(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    const auto failure = [](const std::string& path, const std::string& reason) {
        return ToolResult{{}, "sips: " + path + ": " + reason + "\n", exitFailure};
    };
    const InputFile file(request->source);
    if (!file.isOpen()) return failure(file.path(), file.error());
    const QImage image = read(file, request->side);
    if (image.isNull()) return failure(file.path(), "Cannot be read as a picture");

    QByteArray png;
    QBuffer buffer(&png);
    if (!buffer.open(QIODevice::WriteOnly) || !QImageWriter(&buffer, "png").write(image))
        return failure(file.path(), "Cannot be written as PNG");
    ReplacementFile replacement(request->target);
    if (!replacement.replaceWith({png.constData(), static_cast<size_t>(png.size())}))
        return failure(request->target, replacement.error());
    return {};
}

}  // namespace marrowbeck::tools
