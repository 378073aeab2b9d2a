#include "tools/pictures/Exiv2Image.h"

namespace marrowbeck::tools {

std::unique_ptr<Exiv2::Image> openExiv2Image(Content content, const PictureHeader& /*header*/) {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    std::unique_ptr<Exiv2::Image> image;
    try {
        Exiv2::enableBMFF(true);
        image.reset(Exiv2::ImageFactory::open(content.data(), static_cast<long>(content.size())).release());
        if (image->mimeType().starts_with("video/")) return nullptr;
        image->readMetadata();
    } catch (...) {
        // A damaged file keeps what was read of it.
    }
    return image;
}

int orientationOf(const Exiv2::Image* image, const PictureHeader& header) {
    if (image == nullptr || header.upright) return 1;
    const Exiv2::ExifData& exif = image->exifData();
    const long value = guarded([&] {
        const auto found = exif.findKey(Exiv2::ExifKey("Exif.Image.Orientation"));
        return found == exif.end() || found->count() == 0 ? 1 : found->toLong();
    });
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

}  // namespace marrowbeck::tools
