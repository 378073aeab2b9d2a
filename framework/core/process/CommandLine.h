// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace framework::internal {

/// The words of a command line that a shell would do nothing with but split it, in a folder that is empty: plain and
/// backslash-escaped characters, single quotes, and patterns with * for names in that folder, which match none and stay
/// as they are. Nothing for a line that needs a shell, because of an operator, an expansion, an assignment, or a
/// first word that a shell takes for its own command. The same reading as POSIX, Shell Command Language, 2.2 and 2.3.
std::optional<std::vector<std::string>> PlainWords(std::string_view line);

/// The path of the program that a shell would start for `name` with `searchPath` (folders joined by colons); empty when
/// there is none or the name holds a slash and is no program.
std::string FindProgram(const std::string& name, std::string_view searchPath);

}  // namespace framework::internal
