#pragma once

#include <string>

#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

/// A PNG of `file` with at most `side` pixels on its longer side, never enlarged, as
/// the program `vipsthumbnail` makes it, which reads many a format. It stands as its pixels
/// lie: what Exif says is left to the caller. Empty when it is not
/// installed (it is looked for on the path), does not know the format, or takes too long.
std::string vipsThumbnail(const InputFile& file, int side);

}  // namespace marrowbeck::tools
