// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

#include "framework/core/objects/Ref.h"
#include "framework/core/threads/Fiber.h"
#include "framework/core/threads/Thread.h"

namespace framework::internal {

/// Shares out the time of the window's thread: the event loop calls it, and it lets each ready thread run for a slice
/// in turn, in nested loops too.
class Scheduler {
  public:
    using Clock = std::chrono::steady_clock;

    /// How long a thread runs before the event loop gets its turn: half the time of a screen's frame, so that the
    /// window keeps up with the hand while the switching itself costs next to nothing.
    static constexpr std::chrono::milliseconds kSlice{8};
    /// How long a kill waits for a FinishFirst: with the rest of the way, Stop answers within a tenth of a second.
    static constexpr std::chrono::milliseconds kFinishGrace{80};

    static Scheduler& Instance();

    /// The thread that is running, null on the main stack.
    Thread* Current() const { return current_; }
    /// The bounds of the running thread's stack; only while one runs.
    StackBounds CurrentBounds() const;

    void Start(Thread& thread);
    void Kill(Thread& thread);
    /// Ends all threads, at the end of the program.
    void KillAll();

    /// Lets others run if the running thread's slice is spent.
    void Yield();
    /// Lets the event loop, and the other threads, run once in any case.
    void YieldNow();
    /// Takes the running thread out of the round until Wake. Throws ThreadKilled when it is killed meanwhile.
    void Park(int awaitedDescriptor = -1);
    void Wake(Thread& thread);

    /// Runs `work` on the main stack at the event loop's next turn. The result undoes that, as long as it has not run.
    std::function<void()> Post(std::function<void()> work);

    void NoYieldBegins();
    void NoYieldEnds();

  private:
    class Pump;

    Scheduler();
    ~Scheduler();

    void runTurn();
    void runSlice(Thread& thread);
    void enter(Thread& thread);
    void suspendCurrent();
    void throwIfKilled(const Thread& thread) const;
    void finish(Thread& thread);
    void schedule();

    std::unique_ptr<Pump> pump_;
    Thread* current_ = nullptr;
    std::deque<Ref<Thread>> ready_;
    std::deque<Ref<Thread>> parked_;
    std::deque<std::shared_ptr<std::function<void()>>> posted_;
    Clock::time_point sliceEnd_{};
    int mainNoYield_ = 0;
};

}  // namespace framework::internal
