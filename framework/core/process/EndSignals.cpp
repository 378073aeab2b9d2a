// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/EndSignals.h"

#include <signal.h>

#include <initializer_list>

namespace framework {

void internal::HandleEndSignals(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction old {};
        sigaction(signal, &action, &old);
        // Who started the program said that it shall outlive this.
        if (old.sa_handler == SIG_IGN) sigaction(signal, &old, nullptr);
    }
}

}  // namespace framework
