// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework::System {

/// Writes a line to the system log, and to standard error when that is a terminal.
void DebugLog(const String& text);

/// Why the operating system refused something about a file, by its error number, as the end of a sentence for people:
/// "the disk is full".
String FileErrorReason(int errorNumber);

}  // namespace framework::System
