// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

namespace marrowbeck::bench {

/// Listens to the pulse of the event loop while it lives. Between two beats a person's click or key would have waited.
class Pulse {
  public:
    Pulse() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { beat(); });
        sinceBeat_.start();
        timer_.start(1);
    }

    /// The longest time between two beats until now, in milliseconds. A loop at rest beats each millisecond.
    double LongestPause() {
        beat();
        return static_cast<double>(longest_) / 1e6;
    }

  private:
    void beat() {
        longest_ = std::max(longest_, sinceBeat_.nsecsElapsed());
        sinceBeat_.start();
    }

    QTimer timer_;
    QElapsedTimer sinceBeat_;
    qint64 longest_ = 0;
};

/// How long something took, in milliseconds, and how long the event loop stood still at most meanwhile.
struct Duration {
    double whole = 0;
    double longestPause = 0;
};

/// Does `work` and serves events while `busy` says so.
template <class Work, class Busy>
Duration Measure(Work work, Busy busy) {
    QEventLoop loop;
    Pulse pulse;
    QElapsedTimer clock;
    clock.start();
    work();
    while (busy()) loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    const double whole = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    // What the work has left for the next turn is part of the pause that it makes.
    loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return {whole, pulse.LongestPause()};
}

}  // namespace marrowbeck::bench
