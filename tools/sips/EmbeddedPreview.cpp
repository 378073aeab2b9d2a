#include "tools/sips/EmbeddedPreview.h"

#include <algorithm>

#include "tools/pictures/Exiv2Image.h"

namespace marrowbeck::tools {

namespace {

int longer(std::uint32_t width, std::uint32_t height) {
    return static_cast<int>(std::min<std::uint32_t>(std::max(width, height), 1U << 30));
}

int orientationOf(const Exiv2::Image& image) {
    const Exiv2::ExifData& exif = image.exifData();
    const auto found = exif.findKey(Exiv2::ExifKey("Exif.Image.Orientation"));
    const long value = found == exif.end() || found->count() == 0 ? 1 : found->toLong();
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

EmbeddedPreview previewOf(const Exiv2::Image& image, int side) {
    const Exiv2::PreviewManager manager(image);
    const Exiv2::PreviewPropertiesList list = manager.getPreviewProperties();  // from small to large
    if (list.empty()) return {};
    const auto enough = std::find_if(list.begin(), list.end(), [side](const Exiv2::PreviewProperties& one) {
        return longer(one.width_, one.height_) >= side;
    });
    const Exiv2::PreviewProperties& chosen = enough == list.end() ? list.back() : *enough;
    const Exiv2::PreviewImage found = manager.getPreviewImage(chosen);
    if (found.pData() == nullptr) return {};
    return {{reinterpret_cast<const char*>(found.pData()), found.size()}, longer(chosen.width_, chosen.height_)};
}

}  // namespace

EmbeddedPictures embeddedPictures(const std::string& absolutePath, int side) {
    const std::unique_ptr<Exiv2::Image> image = openExiv2Image(absolutePath);
    if (!image) return {};
    EmbeddedPictures pictures;
    pictures.longerSide = guarded([&] { return std::max({image->pixelWidth(), image->pixelHeight(), 0}); });
    pictures.orientation = std::max(guarded([&] { return orientationOf(*image); }), 1);
    pictures.preview = guarded([&] { return previewOf(*image, side); });
    return pictures;
}

}  // namespace marrowbeck::tools
