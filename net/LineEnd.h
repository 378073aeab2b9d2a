// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The line end that `text` uses: CR LF before LF before CR, and CR LF where it has none.
String LineEndOf(const String& text);

}  // namespace marrowbeck
