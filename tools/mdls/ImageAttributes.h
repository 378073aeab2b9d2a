#pragma once

#include <map>
#include <string>
#include <string_view>

#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

/// Attributes by name, sorted; none is empty, and none holds a NUL byte.
using AttributeMap = std::map<std::string, std::string, std::less<>>;

/// The display name of the file's kind alone.
constexpr std::string_view kindAttribute = "kMDItemKind";

/// Everything that `mdls` can tell of an open file but its kind. A file that makes no sense gives
/// fewer attributes, or none.
AttributeMap readImageAttributes(const InputFile& file);

/// The file's kind in the user's language, such as "JPEG image"; empty if unknown.
std::string readKind(const InputFile& file);

}  // namespace marrowbeck::tools
