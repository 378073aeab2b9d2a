#pragma once

#include "framework/core/String.h"

namespace framework {

/// Opens a URL in the program that the user prefers for it. A URL that makes no sense, or that nothing opens, is left.
/// Any thread.
void ShowURL(const String& url);

/// Sounds the desktop's alert.
void Beep();

}  // namespace framework
