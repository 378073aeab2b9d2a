// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/FileIdentity.h"

namespace marrowbeck::tools {

/// What was seen of a file, as the process that opens files tells it to the supervisor.
struct FileNote {
    /// Whose question it was.
    std::uint32_t id = 0;
    /// The reader that has the question now; 0 for none.
    std::uint32_t reader = 0;
    /// Nothing where no file could be looked at.
    std::optional<base::FileIdentity> file;
    /// Whether it is there, but the system does not let us read it.
    bool isForbidden = false;
    /// Why it could not be opened; empty where it was, or where only a look was asked for.
    std::string error;
};

/// As the body of a frame, and back; nothing for one that makes no sense.
std::string bytesOf(const FileNote& note);
std::optional<FileNote> fileNoteFrom(std::string_view body);

}  // namespace marrowbeck::tools
