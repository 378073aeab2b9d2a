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

/// Shares out the time of the window's thread: it lets each ready thread run for a slice in turn. The event loop calls
/// it, nested ones too, and where the main stack yields or waits without one, it looks after the threads by itself.
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
    /// The thread that is running, if it can be left now; null on the main stack, and while an exception takes down
    /// the thread's stack. What destructors then wait for they wait for plainly.
    Thread* Parkable() const;
    /// The bounds of the running thread's stack; only while one runs.
    StackBounds CurrentBounds() const;

    void Start(Thread& thread);
    /// The same for a thread that carries on a handler of the main stack: its first slice is now.
    void RunHandler(Thread& thread);
    void Kill(Thread& thread);
    /// Ends those that carry on handlers.
    void KillHandlers();
    /// Ends all threads, at the end of the program; what must come to its end first has no more time for all of them
    /// than for one.
    void KillAll();

    /// Lets others run if the running thread's slice is spent.
    void Yield();
    /// Lets the event loop, and the other threads, run once in any case.
    void YieldNow();
    /// Takes the running thread out of the round until Wake. That comes by itself, once `awaitedDescriptor` can be read
    /// from or it is `end`, where the main stack looks after the threads; under an event loop it is the caller's.
    /// Throws ThreadKilled when it is killed meanwhile.
    void Park(int awaitedDescriptor = -1, Clock::time_point end = Clock::time_point::max());
    void Wake(Thread& thread);
    /// Waits on the main stack until `descriptor` can be read from, -1 for none, or it is `end`; returns sooner when a
    /// thread had a share of the time meanwhile.
    void Rest(int descriptor, Clock::time_point end);

    /// Runs `work` on the main stack when that yields, waits, or serves events. The result undoes that, as long as it
    /// has not run.
    std::function<void()> Post(std::function<void()> work);

    void NoYieldBegins();
    void NoYieldEnds();

  private:
    class Pump;

    Scheduler();
    ~Scheduler();

    void kill(Thread& thread, Clock::time_point graceEnd);
    bool mayLeave() const;
    void runTurn();
    void runPosted();
    void runNext();
    void runSlice(Thread& thread);
    void enter(Thread& thread);
    void suspendCurrent();
    void throwIfKilled(const Thread& thread) const;
    void waitFor(int descriptor, Clock::time_point end);
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
