// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/sips/sipsPicture.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include "tools/pictures/Exiv2Image.h"
#include "tools/sips/EmbeddedPreview.h"

namespace marrowbeck::tools {

namespace {

/// Pixels on the longer side of a thumbnail in Exif: good enough only where there is nothing better.
constexpr int exifThumbnailSide = 160;

}  // namespace

Pixels sipsPicture(Content content, int side) {
    PictureLibrary* const library = pictureLibrary();
    if (library == nullptr) return {};
    const PictureHeader header = readPictureHeader(content);
    const std::unique_ptr<Exiv2::Image> image = openExiv2Image(content, header);
    const int orientation = orientationOf(image.get(), header);
    const auto preview = [&](int leastSide) {
        const EmbeddedPreview found = image ? embeddedPreview(*image, side) : EmbeddedPreview();
        if (found.longerSide <= leastSide) return Pixels();
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(found.content.data());
        return library->picture({bytes, found.content.size()}, side, orientation);
    };
    Pixels pixels;
    // Of a raw file the library sees the small picture at its beginning.
    if (sizeOf(image.get(), header, content).width > header.width) pixels = preview(exifThumbnailSide);
    if (pixels.width == 0) pixels = library->picture(content, side, orientation);
    return pixels.width == 0 ? preview(0) : pixels;
}

}  // namespace marrowbeck::tools
