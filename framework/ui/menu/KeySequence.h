// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QKeySequence>

#include "framework/core/text/String.h"

namespace framework::native {

/// The keys of a text such as "Cmd+Q", "Shift+Cmd+S" or "F5". Cmd is the desktop's own key for commands, the Control
/// key; a letter or digit alone is meant with it. Empty for a text that names no keys.
QKeySequence KeysOf(const String& shortcut);

}  // namespace framework::native
