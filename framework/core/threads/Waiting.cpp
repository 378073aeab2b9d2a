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

bool isReadable(int descriptor, int milliseconds) {
    pollfd awaited{descriptor, POLLIN, 0};
    int answer = 0;
    do {
        answer = poll(&awaited, 1, milliseconds);
    } while (answer < 0 && errno == EINTR);
    return answer > 0;
}

}  // namespace

void LoopYield() {
    Scheduler::Instance().Yield();
}

bool WaitReadable(int descriptor, int milliseconds) {
    Thread* const thread = Scheduler::Instance().Current();
    if (!thread) return isReadable(descriptor, milliseconds);
    if (isReadable(descriptor, 0)) return true;

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
    Scheduler::Instance().Park(descriptor);
    return isReadable(descriptor, 0);
}

void Pause(int milliseconds) {
    Thread* const thread = Scheduler::Instance().Current();
    if (!thread) {
        poll(nullptr, 0, milliseconds);
        return;
    }
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.callOnTimeout([thread] { Scheduler::Instance().Wake(*thread); });
    alarm.start(milliseconds);
    Scheduler::Instance().Park();
}

void RunOnMainStack(const std::function<void()>& work) {
    Thread* const thread = Scheduler::Instance().Current();
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
    Thread* const thread = Scheduler::Instance().Current();
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
