// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

#include "framework/core/text/String.h"

namespace framework {

/// Shows `text` in a modal alert with one button and returns when it was dismissed. From a background thread, that
/// thread waits and the windows go on living. Without a window system the text goes to standard error.
void MsgBox(const String& text);

namespace internal {

/// How alerts are shown; set by the layer that has windows. Empty: on standard error again, for when nobody is there
/// any more to dismiss them.
void SetAlertPresenter(std::function<void(const String& text)> presenter);

}  // namespace internal
}  // namespace framework
