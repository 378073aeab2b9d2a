#pragma once

#include <QImage>

#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

/// The picture of `file` by the best means there is: Qt's decoders, a preview inside
/// the file, or the program `vipsthumbnail`. Upright, in sRGB with 8 bits a channel, with
/// at most `side` pixels (1 or more) on its longer side, and never enlarged. Of several
/// pictures it is the first. Null when nothing can read it within the limits of memory.
QImage sipsPicture(const InputFile& file, int side);

}  // namespace marrowbeck::tools
