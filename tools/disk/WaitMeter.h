// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/resource.h>

#include <chrono>
#include <ctime>

namespace marrowbeck::tools {

/// Tells whether this thread has waited for a disk: it has left its processor by its own will, and has been without one
/// for longer than what lies in memory ever takes. Time alone would not tell a far disk from a busy machine.
class WaitMeter {
  public:
    WaitMeter() { reset(); }

    void reset() {
        waits_ = waitsNow();
        worked_ = workedNow();
        since_ = Clock::now();
    }

    /// Since this was made or last reset.
    bool hasWaited() const {
        constexpr std::chrono::microseconds prompt(100);
        return Clock::now() - since_ > prompt && waitsNow() > waits_ &&
               Clock::now() - since_ - (workedNow() - worked_) > prompt;
    }

  private:
    using Clock = std::chrono::steady_clock;

    static long waitsNow() {
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return usage.ru_nvcsw;
    }
    static std::chrono::nanoseconds workedNow() {
        timespec worked{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
        return std::chrono::seconds(worked.tv_sec) + std::chrono::nanoseconds(worked.tv_nsec);
    }

    long waits_ = 0;
    std::chrono::nanoseconds worked_{};
    Clock::time_point since_;
};

}  // namespace marrowbeck::tools
