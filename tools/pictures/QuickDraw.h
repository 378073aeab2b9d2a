// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// A QuickDraw picture (PICT) as it is painted.
struct QuickDrawPicture {
    Pixels pixels;        ///< none where it makes no sense
    std::string profile;  ///< ICC profile (ISO 15076-1)
};

/// What the module "quickdraw" has under the name "readQuickDraw". It asks ImageMagick itself, and tells it what it
/// gets: libvips cannot, and from its version 7 on ImageMagick does not know such a picture by its content. The content
/// begins with the 512 bytes that are for anybody's use. Without a content it makes all ready that is needed to read
/// one.
using ReadQuickDraw = void(Content content, QuickDrawPicture& picture);

}  // namespace marrowbeck::tools
