// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "app/Preferences.h"

namespace marrowbeck::test {

/// Has the program start without asking a server for newer versions, as a person would have said at an earlier start.
inline void SwitchUpdateCheckOff() {
    Preferences::LoadPreferences();
    Preferences::prefs()->root->SetBoolean("autoupdate", false);
    Preferences::SavePreferences();
}

}  // namespace marrowbeck::test
