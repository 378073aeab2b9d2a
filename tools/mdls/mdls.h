#pragma once

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// `mdls [-name ATTRIBUTE]... [-raw] [--] FILE`: the metadata of a picture.
///
/// With `-raw` the values of the attributes in the order of their names, a NUL
/// between any two; otherwise a line `name = value` for each. An attribute without
/// a value, or one that is unknown, is "(null)". Without `-name` every attribute
/// is answered. Values are UTF-8 and hold no NUL.
///
/// Only a file that is missing, or cannot be opened, or is no file gives a status other
/// than 0; one that makes no sense gives "(null)".
ToolResult mdls(const Arguments& arguments);

}  // namespace marrowbeck::tools
