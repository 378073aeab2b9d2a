// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/Dispatch.h"

#include "framework/core/threads/Scheduler.h"

namespace framework::internal {

bool OnThread() noexcept {
    return Scheduler::Instance().Current() != nullptr;
}

NoYield::NoYield() noexcept {
    Scheduler::Instance().NoYieldBegins();
}

NoYield::~NoYield() {
    Scheduler::Instance().NoYieldEnds();
}

}  // namespace framework::internal
