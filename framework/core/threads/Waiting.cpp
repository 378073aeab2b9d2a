// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/Waiting.h"

#include <poll.h>

#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <cerrno>
#include <chrono>
#include <exception>
#include <utility>

#include "framework/core/threads/Scheduler.h"

namespace framework {

using internal::Scheduler;

namespace {

/// Runs a function when the scope is left, by whatever road.
class AtEnd {
  public:
    explicit AtEnd(std::function<void()> work) : work_(std::move(work)) {}
    ~AtEnd() { work_(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

  private:
    std::function<void()> work_;
};

bool isReadable(int descriptor) {
    pollfd awaited{descriptor, POLLIN, 0};
    int answer = 0;
    do {
        answer = poll(&awaited, 1, 0);
    } while (answer < 0 && errno == EINTR);
    return answer > 0;
}

Scheduler::Clock::time_point endOf(int milliseconds) {
    using Clock = Scheduler::Clock;
    return milliseconds < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(milliseconds);
}

}  // namespace

void LoopYield() {
    Scheduler::Instance().Yield();
}

bool WaitReadable(int descriptor, int milliseconds) {
    if (isReadable(descriptor)) return true;
    const auto end = endOf(milliseconds);
    Thread* const thread = Scheduler::Instance().Parkable();
    if (!thread) {
        Scheduler::Instance().Rest(descriptor, end);
        return isReadable(descriptor);
    }

    const auto wake = [thread] { Scheduler::Instance().Wake(*thread); };
    QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&notifier, wake] {
        notifier.setEnabled(false);
        wake();
    });
    QTimer limit;
    if (milliseconds >= 0) {
        limit.setSingleShot(true);
        limit.callOnTimeout(wake);
        limit.start(milliseconds);
    }
    Scheduler::Instance().Park(descriptor, end);
    return isReadable(descriptor);
}

void Pause(int milliseconds) {
    const auto end = endOf(milliseconds);
    Thread* const thread = Scheduler::Instance().Parkable();
    if (!thread) {
        do {
            Scheduler::Instance().Rest(-1, end);
        } while (Scheduler::Clock::now() < end);
        return;
    }
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.callOnTimeout([thread] { Scheduler::Instance().Wake(*thread); });
    alarm.start(milliseconds);
    Scheduler::Instance().Park(-1, end);
}

void RunOnMainStack(const std::function<void()>& work) {
    Thread* const thread = Scheduler::Instance().Parkable();
    if (!thread) {
        work();
        return;
    }
    bool done = false;
    std::exception_ptr raised;
    const AtEnd undo(Scheduler::Instance().Post([&work, &done, &raised, thread] {
        try {
            work();
        } catch (...) {
            raised = std::current_exception();
        }
        done = true;
        Scheduler::Instance().Wake(*thread);
    }));
    while (!done) Scheduler::Instance().Park();
    if (raised) std::rethrow_exception(raised);
}

void Completion::Complete() {
    complete_ = true;
    if (parked_) Scheduler::Instance().Wake(*parked_);
    if (loop_) static_cast<QEventLoop*>(loop_)->quit();
}

void Completion::Wait() {
    if (complete_) return;
    Thread* const thread = Scheduler::Instance().Parkable();
    // Whoever is on the way out of a thread does not stay for it.
    if (!thread && internal::OnThread()) return;
    if (!thread) {
        QEventLoop loop;
        loop_ = &loop;
        const AtEnd forget([this] { loop_ = nullptr; });
        // A quitting program ends all its loops; what is waited for then never comes.
        loop.exec();
        return;
    }
    parked_ = thread;
    const AtEnd forget([this] { parked_ = nullptr; });
    while (!complete_) Scheduler::Instance().Park();
}

}  // namespace framework
