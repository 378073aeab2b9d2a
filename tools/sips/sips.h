#pragma once

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// `sips -s format png [-Z PIXELS] [--] FILE --out FILE`: writes a picture as an
/// upright sRGB PNG, whatever the name of the written file ends in.
///
/// With `-Z` the longer side gets at most that many pixels; proportions stay, and nothing
/// is enlarged. Without, the natural size is kept up to `largestSide`. The output takes
/// its place in one step: on failure it is as it was before, and nothing else is left.
ToolResult sips(const Arguments& arguments);

/// Pixels on a side of the largest PNG that is written. A screen shows no more, and
/// memory and time of the writing stay bounded whatever the source says of itself.
inline constexpr int largestSide = 4096;

}  // namespace marrowbeck::tools
