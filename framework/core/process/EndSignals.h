// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework::internal {

/// Has `handler`, or SIG_DFL, called for the first SIGTERM, SIGINT and SIGHUP each; later ones end the process. Those
/// that whoever started the program had it ignore stay ignored.
void HandleEndSignals(void (*handler)(int));

}  // namespace framework::internal
