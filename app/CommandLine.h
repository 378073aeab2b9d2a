// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

namespace marrowbeck {

/// Answers what a command line asks of the program itself, `--help`, `--version` and `--list`, on standard
/// output, without a display. The exit status then; nothing where the program is to start.
std::optional<int> AnswerCommandLine(int argc, char** argv);

}  // namespace marrowbeck
