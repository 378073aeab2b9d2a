// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>

#include "base/ToolResult.h"

/// Questions about files that are not the program's own, whose disk may take its time: they are asked in a process of
/// our own, the tool `look`, where that is one of the resident tools. A thread parks meanwhile, the main stack waits as
/// it does for a command.
namespace framework::internal::Aside {

/// What is not answered by then, in milliseconds, is taken for not there.
inline constexpr int kPatience = 30'000;

struct Answer {
    /// Whether it came in time.
    bool came = false;
    /// As `look` prints it.
    std::string text;
};

/// Nothing where the tool is not to be had: who wants to know has to ask the disk.
std::optional<Answer> Ask(const base::Arguments& words, int milliseconds = kPatience);

}  // namespace framework::internal::Aside
