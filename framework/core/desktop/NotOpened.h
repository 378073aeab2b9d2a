// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// Tells in an alert why something that was handed to the program could not be opened. Returns at once: what was handed
/// over besides is opened meanwhile. Whoever hands over much that is wrong gets one alert at a time: what it says is
/// not said again while it stands, and what else there is to say waits and is said by the next one together.
void TellNotOpened(const String& reason);

}  // namespace framework
