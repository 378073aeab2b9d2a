// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

namespace marrowbeck::tools {

/// Gives up, for good, nearly all that this process may do: what a hostile file makes of it can then neither read the
/// user's files nor reach anybody. Left are: open descriptors, memory up to `memoryBytes`, threads, and the reading
/// of the system's libraries, fonts and colour profiles and of what lies below `folders`. No writing to files, no
/// new process or program, no socket, no look at other processes; also none of the user's environment but language
/// and data folders.
///
/// Landlock (the paths) does as much as the kernel's version knows; seccomp (the calls) is a must.
/// False when that cannot be had: then no foreign byte may be read. Call it with one thread only.
bool confine(unsigned long long memoryBytes, const std::vector<std::string>& folders);

}  // namespace marrowbeck::tools
