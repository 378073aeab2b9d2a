// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

namespace framework::internal {

/// Has `onLoss` run when the display goes away under the program, because its server or compositor ended: the last
/// moment of the process, which the toolkit ends as soon as `onLoss` returns. It runs in the middle of the toolkit's
/// work, so it may neither serve events nor show anything. Once in a process; main thread.
void OnDisplayLoss(std::function<void()> onLoss);

/// Whether that has happened. Then nothing may be asked of the display: the toolkit would end the process on the spot.
bool IsDisplayLost();

}  // namespace framework::internal
