// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// Raises StackOverflowException when the running thread's stack, the main one's too, is nearly used up. Called by
/// whatever calls itself, so that an endless recursion ends a handler and not the process.
void CheckStack();

}  // namespace framework
