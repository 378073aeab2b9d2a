// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/disk/DiskPool.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <iterator>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// What lies in memory is answered a hundred times sooner.
constexpr Clock::duration promptTime = 200us;
/// After so long without an end the first task waits for the disk.
constexpr Clock::duration firstLook = 1ms;
constexpr Clock::duration laterLook = 10ms;
/// What has not come back by then may never.
constexpr Clock::duration leftBehindAfter = 1s;

/// How often this thread has waited for something. One that only had to leave a processor to others has not.
long waits() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

}  // namespace

/// What the threads share; it lives as long as the last of them.
class DiskPool::Crew : public std::enable_shared_from_this<Crew> {
  public:
    Crew(std::size_t sideBySide, std::size_t most, std::size_t whilePrompt)
        : sideBySide_(sideBySide), most_(most), whilePrompt_(whilePrompt) {}

    void add(std::vector<Task> tasks) {
        const std::lock_guard lock(mutex_);
        std::move(tasks.begin(), tasks.end(), std::back_inserter(tasks_));
        summon();
        if (!isWatched_) {
            isWatched_ = start([this] { watch(); });
        } else if (isWatcherIdle_) {
            watcher_.notify_one();
        }
    }

    void end() {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        tasks_.clear();
        workers_.notify_all();
        watcher_.notify_all();
    }

  private:
    /// Since when each thread that has a task has had it.
    using Times = std::list<Clock::time_point>;

    template <class Life>
    bool start(Life life) {
        try {
            std::thread([self = shared_from_this(), life] { life(); }).detach();
            return true;
        } catch (const std::system_error&) {  // those that are there do what they can
            return false;
        }
    }

    /// Tasks in hand that may still be answered soon.
    std::size_t engaged() const {
        const auto limit = Clock::now() - leftBehindAfter;
        return static_cast<std::size_t>(
            std::count_if(inHand_.begin(), inHand_.end(), [&](Clock::time_point since) { return since > limit; }));
    }

    /// Sees to it that as many tasks are begun as there may be at a time.
    void summon() {
        const std::size_t now = engaged() + called_;
        const std::size_t limit = isSlow_ ? sideBySide_ : whilePrompt_;
        for (std::size_t wanted = std::min(tasks_.size(), limit - std::min(now, limit)); wanted > 0; --wanted) {
            if (idle_ > called_) {
                ++called_;
                workers_.notify_one();
            } else if (threads_ < most_ && start([this] { work(); })) {
                ++threads_;
                ++idle_;
                ++called_;
            } else {
                return;
            }
        }
    }

    void work() {
        std::unique_lock lock(mutex_);
        while (true) {
            workers_.wait(lock, [this] { return isEnding_ || (called_ > 0 && !tasks_.empty()); });
            --idle_;
            if (called_ > 0) --called_;
            long waited = waits();
            while (!tasks_.empty()) doOne(lock, waited);
            // Whoever is still on the way comes too late.
            called_ = 0;
            ++idle_;
            if (isEnding_) return;
        }
    }

    /// `waited` is how often the thread had waited before.
    void doOne(std::unique_lock<std::mutex>& lock, long& waited) {
        Task task = std::move(tasks_.front());
        tasks_.pop_front();
        const auto place = inHand_.insert(inHand_.end(), Clock::now());
        if (isSlow_) summon();
        lock.unlock();
        task();
        task = nullptr;
        bool isSlow = Clock::now() - *place > promptTime;
        // What takes long because there is much of it gains nothing from more threads.
        if (isSlow) {
            const long before = std::exchange(waited, waits());
            isSlow = waited > before;
        }
        lock.lock();
        isSlow_ = isSlow;
        inHand_.erase(place);
    }

    /// Looks whether tasks wait behind one that does not come to an end.
    void watch() {
        std::unique_lock lock(mutex_);
        while (!isEnding_) {
            if (tasks_.empty()) {
                isWatcherIdle_ = true;
                watcher_.wait(lock);
                isWatcherIdle_ = false;
                continue;
            }
            watcher_.wait_for(lock, isSlow_ ? laterLook : firstLook);
            const auto now = Clock::now();
            const auto isWaiting = [now](Clock::time_point since) {
                return since < now - firstLook && since > now - leftBehindAfter;
            };
            isSlow_ = isSlow_ || std::any_of(inHand_.begin(), inHand_.end(), isWaiting);
            summon();
        }
    }

    const std::size_t sideBySide_;
    const std::size_t most_;
    const std::size_t whilePrompt_;
    std::mutex mutex_;
    std::condition_variable workers_;
    std::condition_variable watcher_;
    std::deque<Task> tasks_;
    Times inHand_;
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;    ///< those without a task, called or not
    std::size_t called_ = 0;  ///< those of them that are on their way to one
    bool isSlow_ = false;
    bool isWatched_ = false;
    bool isWatcherIdle_ = false;
    bool isEnding_ = false;
};

DiskPool::DiskPool(std::size_t sideBySide, std::size_t most, std::size_t whilePrompt)
    : crew_(std::make_shared<Crew>(sideBySide, most, whilePrompt)) {}

DiskPool::~DiskPool() {
    crew_->end();
}

void DiskPool::add(Task task) {
    std::vector<Task> one;
    one.push_back(std::move(task));
    crew_->add(std::move(one));
}

void DiskPool::add(std::vector<Task> tasks) {
    crew_->add(std::move(tasks));
}

}  // namespace marrowbeck::tools
