#include "framework/core/Thread.h"

#include "framework/core/Fiber.h"
#include "framework/core/Scheduler.h"

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

Thread::FinishFirst::FinishFirst() : thread_(Scheduler::Instance().Current()) {
    if (thread_) ++thread_->finishFirst_;
}

Thread::FinishFirst::~FinishFirst() {
    // A kill whose patience ended has set the count to zero.
    if (thread_ && thread_->finishFirst_ > 0) --thread_->finishFirst_;
}

}  // namespace framework
