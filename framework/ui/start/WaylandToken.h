// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework::internal {

/// A token by the protocol "XDG activation" for what a person did last in this program: compositors let the window of a
/// program that shows it come to the front. Empty on other displays than Wayland, and where the compositor does not
/// know the protocol. Asks the compositor, and waits for its answer.
String WaylandActivationToken();

}  // namespace framework::internal
