// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Frames.h"

namespace framework::internal {

/// The file that the last answer of a resident tool was about: the tool has looked at it, so that nobody else needs to.
namespace AnsweredFile {

void Note(const base::AboutFile& about);

/// Its length in bytes, if it is the file at `path` and the answer still holds.
std::optional<std::uint64_t> LengthOf(std::string_view path);

/// Whether it is the file at `path` and gave no answer: whoever asks it anything would wait for as long once more.
bool WasSilent(std::string_view path);

}  // namespace AnsweredFile
}  // namespace framework::internal
