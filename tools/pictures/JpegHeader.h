// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// Whether the content begins as a JPEG does.
bool isJpeg(Content content);

/// The header of a JPEG (ISO/IEC 10918-1), as far as it makes sense. Read by ourselves, since most pictures are of this
/// kind and the library takes a hundred times longer to load.
PictureHeader readJpegHeader(Content content);

}  // namespace marrowbeck::tools
