// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "tools/pictures/Exiv2Image.h"

namespace marrowbeck::tools {

/// A small picture that a camera has laid beside the real one, mostly a JPEG.
struct EmbeddedPreview {
    std::string content;  ///< a picture file of its own; empty where there is none
    int longerSide = 0;   ///< of the preview, in pixels
};

/// The smallest preview with at least `side` pixels on its longer side, else the largest. The rules of calling are
/// those of `openExiv2Image`.
EmbeddedPreview embeddedPreview(const Exiv2::Image& image, int side);

}  // namespace marrowbeck::tools
