#pragma once

#include <string>
#include <vector>

namespace marrowbeck::tools {

/// The user's languages from the environment, best first, each also without its
/// country: "de_AT" and then "de". Empty in the C locale.
std::vector<std::string> userLanguages();

/// The `<comment>` of a type's description in the shared MIME database (`file`, XML),
/// in the best of `languages`, else in the description's own language; empty
/// when the file is missing or holds none. Always UTF-8.
std::string mimeComment(const std::string& file, const std::vector<std::string>& languages);

}  // namespace marrowbeck::tools
