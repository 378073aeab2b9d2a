// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework::internal {

/// Sees to it that a session bus which has stopped answering, as one does that hangs or was halted, keeps nothing of
/// this process waiting: it counts as not there then, for what is started from here too. For the start, before the
/// toolkit looks for the bus; takes a second at most.
void DoWithoutSilentSessionBus();

}  // namespace framework::internal
