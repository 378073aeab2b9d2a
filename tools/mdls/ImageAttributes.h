// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// Attributes by name, sorted; none is empty. Values are UTF-8 without NUL and without a byte-order mark at their
/// beginning, and have at most `longestValue` bytes.
using AttributeMap = std::map<std::string, std::string, std::less<>>;

/// More than anybody reads; a longer text is cut at the border of a character, a longer list at that of an element.
inline constexpr std::size_t longestValue = 65536;

/// The display name of the file's kind, which is no business of the functions here.
constexpr std::string_view kindAttribute = "kMDItemKind";

/// Everything that `mdls` can tell of a file's content but its kind. A file that makes no sense gives fewer
/// attributes, or none.
AttributeMap readImageAttributes(Content content);

}  // namespace marrowbeck::tools
