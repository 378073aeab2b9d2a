#pragma once

#include "framework/core/String.h"

namespace framework::System {

/// Writes a line to the system log, and to standard error when that is a terminal.
void DebugLog(const String& text);

}  // namespace framework::System
