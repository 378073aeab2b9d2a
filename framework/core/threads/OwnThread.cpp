// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/OwnThread.h"

#include <utility>

#include "framework/core/threads/Scheduler.h"

namespace framework {

void OnOwnThread(std::function<void()> handler) {
    if (internal::OnThread()) return handler();
    const Ref<Thread> thread = New<Thread>();
    thread->OnRun = std::move(handler);
    internal::Scheduler::Instance().RunHandler(*thread);
}

}  // namespace framework
