// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

namespace framework {

class Thread;

/// The yield at the end of every pass of every loop. Nearly free: looks at the clock, and lets others run only when
/// this thread's share of time is spent. On a thread that is being killed it does not return.
void LoopYield();

/// Waits until `descriptor` can be read from (or its other end was closed), at most `milliseconds`; below 0 means for
/// ever. The threads go on meanwhile, and on a thread the window too; the main stack serves no events. False when it
/// cannot be read from yet: the time ran out, or what this waits for may have been brought about by another thread.
bool WaitReadable(int descriptor, int milliseconds = -1);

/// Rests for some time, as a loop that asks again and again does between two questions. Others go on meanwhile as they
/// do in WaitReadable.
void Pause(int milliseconds);

/// Runs `work` on the main thread's own stack and returns when it is done: for what needs much stack or runs a loop of
/// events. On the main thread this is a plain call. An exception of `work` reaches the caller.
void RunOnMainStack(const std::function<void()>& work);

/// Something that one side waits for and another brings about later, such as the closing of a dialog.
class Completion {
  public:
    Completion() = default;
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;

    bool IsComplete() const { return complete_; }
    void Complete();
    /// Returns once Complete was called. A thread parks; the main thread serves events meanwhile.
    void Wait();

  private:
    bool complete_ = false;
    Thread* parked_ = nullptr;
    void* loop_ = nullptr;
};

}  // namespace framework
