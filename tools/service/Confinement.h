// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// All that a reader may have opened: the system's libraries with what they load, fonts and colour profiles, and `own`.
std::vector<std::string> readableFolders(std::vector<std::string> own);

/// Gives up, for good, nearly all that this process may do: what a hostile file makes of it can then neither read the
/// user's files nor reach anybody. Left are: open descriptors, memory up to `memoryBytes`, a few threads, and the
/// reading of what lies below `folders`, each file of which the supervisor opens. No writing to files, no new process
/// or program, no socket, no look at other processes; none of root's powers, and none of the user's environment but
/// language and data folders.
///
/// Gives the descriptor by which the supervisor is asked about files and threads (see Gatekeeper), to be handed to it
/// and closed. It is not open where a system has no such thing; then Landlock has the word about paths, or where that
/// is missing too, nothing is opened, and what libraries would load later is not read. Nothing at all when calls cannot
/// be filtered: then no foreign byte may be read. Call it with one thread only.
std::optional<base::Descriptor> confine(unsigned long long memoryBytes, const std::vector<std::string>& folders);

}  // namespace marrowbeck::tools
