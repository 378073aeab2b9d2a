// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/Scheduler.h"

#include <poll.h>

#include <QBasicTimer>
#include <QObject>
#include <QTimerEvent>
#include <algorithm>
#include <cassert>
#include <cstdint>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

#include "framework/core/objects/System.h"
#include "framework/core/threads/Dispatch.h"

namespace framework::internal {

namespace {

using Clock = Scheduler::Clock;

/// The time up to `end` as poll takes it: whole milliseconds, not too few of them.
int untilThen(Clock::time_point end) {
    if (end == Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

}  // namespace

/// The scheduler's place in the event loop: a timer that fires at each turn of the loop while there is work.
class Scheduler::Pump : public QObject {
  public:
    explicit Pump(Scheduler& scheduler) : scheduler_(scheduler) {}

    void Start() {
        if (!timer_.isActive()) timer_.start(0, this);
    }
    void Stop() { timer_.stop(); }

  protected:
    void timerEvent(QTimerEvent*) override { scheduler_.runTurn(); }

  private:
    Scheduler& scheduler_;
    QBasicTimer timer_;
};

Scheduler::Scheduler() : pump_(std::make_unique<Pump>(*this)) {}

Scheduler::~Scheduler() = default;

Scheduler& Scheduler::Instance() {
    // Lives to the very end: objects of static storage may still hold threads then.
    static auto* instance = new Scheduler;
    return *instance;
}

StackBounds Scheduler::CurrentBounds() const {
    return current_->fiber_->Bounds();
}

void Scheduler::schedule() {
    pump_->Start();
}

void Scheduler::Start(Thread& thread) {
    if (thread.state_ != Thread::NotRunning) return;
    thread.state_ = Thread::Running;
    thread.killed_ = false;
    thread.fiber_ = std::make_unique<Fiber>([&thread] {
        if (!thread.killed_) thread.OnRun.Raise();
    });
    ready_.emplace_back(&thread);
    schedule();
}

void Scheduler::RunHandler(Thread& thread) {
    thread.isHandler_ = true;
    Start(thread);
    ready_.pop_back();
    runSlice(thread);
}

Thread* Scheduler::Parkable() const {
    return std::uncaught_exceptions() == 0 ? current_ : nullptr;
}

/// Whether others may run now, in the middle of what is running.
bool Scheduler::mayLeave() const {
    return (current_ ? current_->noYield_ : mainNoYield_) == 0 && std::uncaught_exceptions() == 0;
}

void Scheduler::runTurn() {
    runPosted();
    runNext();
    if (ready_.empty() && posted_.empty()) pump_->Stop();
}

void Scheduler::runPosted() {
    for (auto jobs = std::exchange(posted_, {}); !jobs.empty(); jobs.pop_front()) {
        if (*jobs.front()) (*jobs.front())();
    }
}

void Scheduler::runNext() {
    if (ready_.empty()) return;
    const Ref<Thread> thread = ready_.front();
    ready_.pop_front();
    runSlice(*thread);
}

void Scheduler::runSlice(Thread& thread) {
    sliceEnd_ = Clock::now() + kSlice;
    const Ref<Thread> alive(&thread);
    enter(thread);
    // The main stack's own share begins now.
    sliceEnd_ = Clock::now() + kSlice;
}

/// Runs the thread until it yields, parks or ends, from whatever stack this is.
void Scheduler::enter(Thread& thread) {
    Thread* const outer = std::exchange(current_, &thread);
    thread.state_ = Thread::Running;
    thread.fiber_->Resume();
    current_ = outer;
    if (thread.fiber_->IsOver()) finish(thread);
}

void Scheduler::finish(Thread& thread) {
    thread.fiber_.reset();
    thread.state_ = Thread::NotRunning;
    thread.killed_ = false;
    const auto isIt = [&thread](const Ref<Thread>& other) { return other.Get() == &thread; };
    std::erase_if(ready_, isIt);
    std::erase_if(parked_, isIt);
}

void Scheduler::throwIfKilled(const Thread& thread) const {
    if (thread.killed_ && thread.finishFirst_ == 0 && std::uncaught_exceptions() == 0) throw ThreadKilled();
}

void Scheduler::suspendCurrent() {
    Thread& thread = *current_;
    thread.fiber_->Suspend();
    throwIfKilled(thread);
}

void Scheduler::Yield() {
    if (!current_ && ready_.empty() && parked_.empty()) return;
    if (!mayLeave()) return;
    if (current_) throwIfKilled(*current_);
    const auto now = Clock::now();
    if (now < sliceEnd_) return;
    if (current_) {
        YieldNow();
    } else {
        Rest(-1, now);
        sliceEnd_ = Clock::now() + kSlice;
    }
}

void Scheduler::YieldNow() {
    if (!current_ || !mayLeave()) return;
    throwIfKilled(*current_);
#ifndef NDEBUG
    constexpr std::chrono::milliseconds kTooLong{50};
    if (Clock::now() > sliceEnd_ + kTooLong) System::DebugLog("A thread ran for more than 50 ms without a yield.");
#endif
    ready_.emplace_back(current_);
    schedule();
    suspendCurrent();
}

void Scheduler::Park(int awaitedDescriptor, Clock::time_point end) {
    Thread& thread = *current_;
    throwIfKilled(thread);
    thread.state_ = Thread::Waiting;
    thread.awaitedDescriptor_ = awaitedDescriptor;
    thread.awaitedTime_ = end;
    parked_.emplace_back(&thread);
    thread.fiber_->Suspend();
    thread.awaitedDescriptor_ = -1;
    throwIfKilled(thread);
}

void Scheduler::Rest(int descriptor, Clock::time_point end) {
    const bool shares = !current_ && mayLeave();
    if (!shares) {
        pollfd awaited{descriptor, POLLIN, 0};
        poll(&awaited, 1, untilThen(end));
        return;
    }
    runPosted();
    waitFor(descriptor, end);
    runNext();
}

/// Waits for what the threads wait for besides, and wakes those whose time has come.
void Scheduler::waitFor(int descriptor, Clock::time_point end) {
    std::vector<pollfd> awaited{{descriptor, POLLIN, 0}};
    for (const Ref<Thread>& thread : parked_) {
        awaited.push_back({thread->awaitedDescriptor_, POLLIN, 0});
        end = std::min(end, thread->awaitedTime_);
    }
    const int found = poll(awaited.data(), awaited.size(), ready_.empty() ? untilThen(end) : 0);
    const auto now = Clock::now();
    const std::deque<Ref<Thread>> waiting = parked_;
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        const bool isReadable = found > 0 && awaited[i + 1].revents != 0;
        if (isReadable || waiting[i]->awaitedTime_ <= now) Wake(*waiting[i]);
    }
}

void Scheduler::Wake(Thread& thread) {
    const auto place = std::find_if(parked_.begin(), parked_.end(),
                                    [&thread](const Ref<Thread>& other) { return other.Get() == &thread; });
    if (place == parked_.end()) return;
    ready_.push_back(*place);
    parked_.erase(place);
    schedule();
}

void Scheduler::Kill(Thread& thread) {
    kill(thread, Clock::now() + kFinishGrace);
}

void Scheduler::kill(Thread& thread, Clock::time_point graceEnd) {
    if (thread.state_ == Thread::NotRunning) return;
    thread.killed_ = true;
    if (&thread == current_) {
        if (std::uncaught_exceptions() == 0) throw ThreadKilled();
        return;
    }
    const Ref<Thread> alive(&thread);
    const auto takeOut = [this, &thread] {
        const auto isIt = [&thread](const Ref<Thread>& other) { return other.Get() == &thread; };
        std::erase_if(ready_, isIt);
        std::erase_if(parked_, isIt);
    };

    // Let work that must not be left half done come to its end, as long as it only waits for a command.
    while (thread.state_ != Thread::NotRunning && thread.finishFirst_ > 0 && Clock::now() < graceEnd) {
        if (thread.state_ == Thread::Waiting) {
            if (thread.awaitedDescriptor_ < 0) break;
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(graceEnd - Clock::now());
            pollfd awaited{thread.awaitedDescriptor_, POLLIN, 0};
            if (poll(&awaited, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) <= 0) break;
        }
        takeOut();
        sliceEnd_ = graceEnd;
        enter(thread);
    }
    thread.finishFirst_ = 0;
    while (thread.state_ != Thread::NotRunning) {
        takeOut();
        enter(thread);
    }
}

void Scheduler::KillHandlers() {
    const auto graceEnd = Clock::now() + kFinishGrace;
    std::deque<Ref<Thread>> threads = ready_;
    threads.insert(threads.end(), parked_.begin(), parked_.end());
    for (const Ref<Thread>& thread : threads) {
        if (thread->isHandler_) kill(*thread, graceEnd);
    }
}

void Scheduler::KillAll() {
    const auto graceEnd = Clock::now() + kFinishGrace;
    while (!ready_.empty()) kill(*ready_.front(), graceEnd);
    while (!parked_.empty()) kill(*parked_.front(), graceEnd);
    posted_.clear();
}

std::function<void()> Scheduler::Post(std::function<void()> work) {
    auto job = std::make_shared<std::function<void()>>(std::move(work));
    posted_.push_back(job);
    schedule();
    return [job] { *job = nullptr; };
}

void Scheduler::NoYieldBegins() {
    ++(current_ ? current_->noYield_ : mainNoYield_);
}

void Scheduler::NoYieldEnds() {
    --(current_ ? current_->noYield_ : mainNoYield_);
}

}  // namespace framework::internal
