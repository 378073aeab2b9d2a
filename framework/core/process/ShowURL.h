// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// Opens the URL in the desktop's application for it. True when that was started, which says nothing of whether the
/// application then could show it. Does not wait.
bool ShowURL(const String& url);

}  // namespace framework
