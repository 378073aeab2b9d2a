// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace framework::internal {

/// The folder in which commands run: an empty one, made at the first call, that goes with the process; the root folder
/// where none can be made.
const std::string& WorkingFolder();

/// From now on the folder goes too when SIGTERM, SIGINT or SIGHUP ends the process, which they do as ever: at once. For
/// a program without an event loop, which could not end in order before the command in hand is over.
void RemoveWorkingFolderAtSignals();

}  // namespace framework::internal
