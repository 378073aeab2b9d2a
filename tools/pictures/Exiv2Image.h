// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// The only place that includes Exiv2, so that its traps are met once.
#include <cstdint>
#include <memory>

#include "tools/pictures/Exiv2Versions.h"
#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// Reads the metadata of a picture, as far as it makes sense: what was read before a fault is kept. What only
/// `header` has found (late Exif, XMP of formats that Exiv2 does not know) is added; `content` must outlive the image.
/// Videos count as no picture. Nil when there is no metadata at all. Never throws on account of the file,
/// and prints nothing. Not for two threads at a time, as XMP is global.
std::unique_ptr<Exiv2::Image> openExiv2Image(Content content, const PictureHeader& header);

/// Width and height of the picture proper in pixels, as it lies; 0 when unknown. `image` may be null. Raw files of
/// cameras look like TIFF and begin with a small picture, which is all that the header tells of.
struct PictureSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};
PictureSize sizeOf(const Exiv2::Image* image, const PictureHeader& header, Content content);

/// How a picture stands, as in Exif (1 to 8): the one place that decides it, for facts and previews alike. `image`
/// may be null.
int orientationOf(const Exiv2::Image* image, const PictureHeader& header);

/// What `read` returns, or an empty result where Exiv2 throws. It does so when a
/// value is read, converted or printed, not only when a file is opened.
template <typename Read>
auto guarded(Read read) -> decltype(read()) {
    try {
        return read();
    } catch (...) {  // its XMP part throws more than standard exceptions
        return {};
    }
}

}  // namespace marrowbeck::tools
