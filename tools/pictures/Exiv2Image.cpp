// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/Exiv2Image.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace marrowbeck::tools {

namespace {

std::string_view textOf(Content content) {
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

std::unique_ptr<Exiv2::Image> opened(Content content) {
    std::unique_ptr<Exiv2::Image> image;
    try {
        image.reset(Exiv2::ImageFactory::open(content.data(), static_cast<exiv2::Size>(content.size())).release());
        // Not by the name of the type: asked for that before it is read, a raw file takes its first small picture for
        // the whole.
        if (exiv2::isVideo(*image)) return nullptr;
        image->readMetadata();
    } catch (...) {
        // A damaged file keeps what was read of it.
    }
    return image;
}

/// The XMP packet of a GIF (XMP Specification, part 3): text behind a mark, ended by bytes that lead any reader of
/// blocks to the end of them.
std::string gifPacket(Content content) {
    constexpr std::string_view mark = "XMP DataXMP";
    constexpr std::string_view end = "\x01\xff\xfe";
    const std::string_view text = textOf(content);
    if (!text.starts_with("GIF8")) return {};
    const std::size_t start = text.find(mark);
    if (start == std::string_view::npos) return {};
    const std::string_view packet = text.substr(start + mark.size());
    return std::string(packet.substr(0, packet.find(end)));
}

bool hasCameraData(const Exiv2::ExifData& exif) {
    return std::any_of(exif.begin(), exif.end(), [](const Exiv2::Exifdatum& one) {
        return guarded([&] { return one.groupName() == "Photo" || one.key() == "Exif.Image.Make"; });
    });
}

/// What is written in XMP alone is found where everybody looks for it.
void addFromXmp(Exiv2::Image& image) {
    if (image.xmpData().empty() || hasCameraData(image.exifData())) return;
    Exiv2::ExifData found;
    Exiv2::copyXmpToExif(image.xmpData(), found);
    for (const Exiv2::Exifdatum& one : found) {
        if (image.exifData().findKey(Exiv2::ExifKey(one.key())) == image.exifData().end()) image.exifData().add(one);
    }
}

bool looksLikeTiff(Content content) {
    return content.size() > 4 && content[0] == content[1] && (content[0] == 'I' || content[0] == 'M');
}

}  // namespace

std::unique_ptr<Exiv2::Image> openExiv2Image(Content content, const PictureHeader& header) {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    exiv2::enableBoxFormats();
    std::unique_ptr<Exiv2::Image> image = opened(content);
    const std::string packet = header.xmp.empty() ? gifPacket(content) : header.xmp;
    if (!image && (!header.exif.empty() || !packet.empty())) {
        // Any kind of image will do to hold what others have found.
        image = guarded([] {
            return std::unique_ptr<Exiv2::Image>(Exiv2::ImageFactory::create(Exiv2::ImageType::jpeg).release());
        });
    }
    if (!image) return nullptr;
    guarded([&] {
        if (image->exifData().empty() && !header.exif.empty()) {
            Exiv2::ExifParser::decode(image->exifData(), reinterpret_cast<const Exiv2::byte*>(header.exif.data()),
                                      static_cast<std::uint32_t>(header.exif.size()));
        }
        return true;
    });
    guarded([&] {
        if (image->xmpData().empty() && !packet.empty()) Exiv2::XmpParser::decode(image->xmpData(), packet);
        return true;
    });
    guarded([&] {
        addFromXmp(*image);
        return true;
    });
    return image;
}

PictureSize sizeOf(const Exiv2::Image* image, const PictureHeader& header, Content content) {
    PictureSize size{header.width, header.height};
    const bool known = size.width != 0 && size.height != 0;
    if (image == nullptr || (known && !looksLikeTiff(content))) return size;
    const auto width = guarded([&] { return image->pixelWidth(); });
    const auto height = guarded([&] { return image->pixelHeight(); });
    if (width < 1 || height < 1) return size;
    const PictureSize other{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    const auto area = [](const PictureSize& one) { return std::uint64_t{one.width} * one.height; };
    return !known || area(other) > area(size) ? other : size;
}

int orientationOf(const Exiv2::Image* image, const PictureHeader& header) {
    if (image == nullptr || header.upright) return 1;
    const Exiv2::ExifData& exif = image->exifData();
    const std::int64_t value = guarded([&] {
        const auto found = exif.findKey(Exiv2::ExifKey("Exif.Image.Orientation"));
        return found == exif.end() || found->count() == 0 ? 1 : exiv2::numberOf(*found);
    });
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

}  // namespace marrowbeck::tools
