// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

class QEvent;

namespace framework::internal {

/// Notes when a person last clicked or pressed a key, by the clock of the display. To be told each event of the
/// toolkit.
void NoteInput(const QEvent& event);

/// A startup id that carries that time, by the Startup Notification Protocol: window managers let the window of a
/// program that shows it come to the front, unless the person has gone on to something else since. Empty on other
/// displays than X11, and before the first input.
String StartupIdOfLastInput();

}  // namespace framework::internal
