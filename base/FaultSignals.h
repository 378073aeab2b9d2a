// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <csignal>

namespace base {

/// Whether a process that a signal has ended brought that about by itself, and would again. Any other signal comes from
/// somebody else: a person, the end of a session, a system that is short of memory.
constexpr bool isFaultSignal(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGILL || signal == SIGFPE || signal == SIGABRT ||
           signal == SIGTRAP || signal == SIGSYS;
}

}  // namespace base
