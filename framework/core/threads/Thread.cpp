// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/Thread.h"

#include <exception>
#include <utility>

#include "framework/core/threads/Fiber.h"
#include "framework/core/threads/Scheduler.h"

namespace framework {

using internal::Scheduler;

Thread::Thread() = default;

Thread::~Thread() = default;

void Thread::Run() {
    Scheduler::Instance().Start(*this);
}

void Thread::Kill() {
    Scheduler::Instance().Kill(*this);
}

Thread::FinishFirst::FinishFirst(std::function<void()> undo)
    : thread_(Scheduler::Instance().Current()), undo_(std::move(undo)), exceptions_(std::uncaught_exceptions()) {
    if (thread_) ++thread_->finishFirst_;
}

Thread::FinishFirst::~FinishFirst() {
    if (!thread_) return;
    // A kill whose patience ended has set the count to zero.
    if (thread_->finishFirst_ > 0) --thread_->finishFirst_;
    if (undo_ && thread_->killed_ && std::uncaught_exceptions() > exceptions_) Dispatch(undo_);
}

}  // namespace framework
