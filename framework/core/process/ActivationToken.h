// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/core/text/String.h"

namespace framework::internal {

/// What another program has to show to the desktop so that its window, open already perhaps, comes to the front: that a
/// person just asked for it in this program. A startup id by the Startup Notification Protocol, or a token by the
/// protocol "XDG activation"; empty where there is neither. To be asked for when the person acts, and for one use.
/// Main thread.
String ActivationToken();

/// The variables in which a program that is started looks for its token: each kind of desktop in its own.
inline constexpr const char* kActivationVariables[] = {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"};

/// The process's environment with the token in it, for a program that is started; each entry is "name=value".
std::vector<std::string> EnvironmentWithActivation(const String& token);

/// Where tokens come from; set by the layer that has windows. Empty: from nowhere.
void SetActivationTokenMaker(std::function<String()> make);

}  // namespace framework::internal
