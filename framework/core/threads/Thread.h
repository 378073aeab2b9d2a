// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/threads/Event.h"

namespace framework {

namespace internal {
class Fiber;
class Scheduler;
}  // namespace internal

/// A cooperative thread: a second stack on the window's own thread. Exactly one runs at a time, and the change from
/// one to another happens at yields only, so that threads may touch controls and data without locks.
class Thread : public Object {
  public:
    enum : int { Running = 0, Waiting = 1, NotRunning = 4 };

    Thread();
    ~Thread() override;

    /// What the thread does; bound once, before Run.
    Event<void()> OnRun;

    /// Starts the thread; it gets its first share of time from the event loop. Does nothing while it runs.
    void Run();

    /// Ends the thread at the yield where it stands: its destructors run, its remaining statements do not. State is
    /// NotRunning when this returns. A command that it waits for is ended, with all its children, at once. Only a
    /// FinishFirst puts this off.
    void Kill();

    /// NotRunning, Waiting while it waits for a command or a person, or Running.
    int State() const { return state_; }

    /// Kept for their owners; all threads share time evenly and have the same stack.
    int Priority() const { return priority_; }
    void Priority(int priority) { priority_ = priority; }
    int StackSize() const { return stackSize_; }
    void StackSize(int bytes) { stackSize_ = bytes; }

    /// While one lives on a thread, a kill first lets the thread go on to the end of the guarded work, for at most a
    /// twelfth of a second: a row, once begun, becomes whole. A tool that hangs does not hold up the kill for longer;
    /// the work is then given up, and `undo` takes back what was done of it.
    class FinishFirst {
      public:
        explicit FinishFirst(std::function<void()> undo = {});
        ~FinishFirst();
        FinishFirst(const FinishFirst&) = delete;
        FinishFirst& operator=(const FinishFirst&) = delete;

      private:
        Thread* thread_;
        std::function<void()> undo_;
        int exceptions_;
    };

  private:
    friend class internal::Scheduler;

    int state_ = NotRunning;
    int priority_ = 5;
    int stackSize_ = 0;
    int finishFirst_ = 0;
    int noYield_ = 0;
    bool killed_ = false;
    bool isHandler_ = false;
    /// What a parked thread waits for, besides being woken; -1 for none.
    int awaitedDescriptor_ = -1;
    std::chrono::steady_clock::time_point awaitedTime_ = std::chrono::steady_clock::time_point::max();
    std::unique_ptr<internal::Fiber> fiber_;
};

}  // namespace framework
