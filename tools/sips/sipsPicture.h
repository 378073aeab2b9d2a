// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// The picture of a file by the best means there is: its pixels, or a preview inside the file. Upright, in sRGB, with
/// at most `side` pixels (1 or more) on its longer side, and never enlarged. Of several pictures it is the
/// first. No picture when nothing can read it.
Pixels sipsPicture(Content content, int side);

}  // namespace marrowbeck::tools
