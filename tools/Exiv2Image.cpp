#include "tools/Exiv2Image.h"

namespace marrowbeck::tools {

std::unique_ptr<Exiv2::Image> openExiv2Image(const std::string& absolutePath) {
    if (!absolutePath.starts_with('/')) return nullptr;
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    std::unique_ptr<Exiv2::Image> image;
    try {
        Exiv2::enableBMFF(true);
        image.reset(Exiv2::ImageFactory::open(absolutePath, false).release());
        if (image->mimeType().starts_with("video/")) return nullptr;
        image->readMetadata();
    } catch (...) {
        // A damaged file keeps what was read of it.
    }
    return image;
}

}  // namespace marrowbeck::tools
