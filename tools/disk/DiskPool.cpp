// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/disk/DiskPool.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <iterator>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "base/Descriptor.h"
#include "tools/disk/WaitMeter.h"

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

/// A task in hand.
struct Hand {
    pid_t thread = 0;
    Clock::time_point since;
};

/// Whether the thread waits for something, and not just for a processor. True where the system does not tell.
bool isWaiting(pid_t thread) {
    const std::string path = "/proc/self/task/" + std::to_string(thread) + "/stat";
    auto file = base::Descriptor::Open(path.c_str(), O_RDONLY);
    std::array<char, 64> line{};
    // Behind the name, which is at most 15 bytes in brackets and may hold brackets.
    const std::string_view text(line.data(),
                                static_cast<std::size_t>(std::max<ssize_t>(0, file.Read(line.data(), line.size()))));
    return !text.substr(std::min(text.size(), text.rfind(')') + 1)).starts_with(" R");
}

}  // namespace

/// What the threads share; it lives as long as the last of them.
class DiskPool::Crew : public std::enable_shared_from_this<Crew> {
  public:
    Crew(std::size_t sideBySide, std::size_t most, std::size_t whilePrompt)
        : sideBySide_(sideBySide), most_(most), whilePrompt_(whilePrompt) {}

    void add(std::vector<Task> tasks) {
        std::unique_lock lock(mutex_);
        std::move(tasks.begin(), tasks.end(), std::back_inserter(tasks_));
        const std::size_t called = summon();
        if (tasks_.size() > called_) watchOver();
        lock.unlock();
        wake(called);
    }

    void end() {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        tasks_.clear();
        workers_.notify_all();
        watcher_.notify_all();
    }

  private:
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
            std::count_if(inHand_.begin(), inHand_.end(), [limit](const Hand& hand) { return hand.since > limit; }));
    }

    std::size_t limit() const { return isSlow_ ? sideBySide_ : whilePrompt_; }

    /// Sees to it that as many tasks are begun as there may be at a time. How many threads are to be woken, which is
    /// better done when the lock is free for them.
    std::size_t summon() {
        const std::size_t now = engaged() + called_;
        std::size_t woken = 0;
        for (std::size_t wanted = std::min(tasks_.size(), limit() - std::min(now, limit())); wanted > 0; --wanted) {
            if (idle_ > called_) {
                ++called_;
                ++woken;
            } else if (threads_ < most_ && start([this] { work(); })) {
                ++threads_;
                ++idle_;
                ++called_;
            } else {
                break;
            }
        }
        return woken;
    }

    /// For tasks that no thread is on its way to: those in hand may never end.
    void watchOver() {
        if (!isWatched_) isWatched_ = start([this] { watch(); });
        if (isWatcherIdle_) watcher_.notify_one();
    }

    void wake(std::size_t threads) {
        for (; threads > 0; --threads) workers_.notify_one();
    }

    void work() {
        const pid_t thread = gettid();
        WaitMeter meter;
        std::unique_lock lock(mutex_);
        while (true) {
            workers_.wait(lock, [this] { return isEnding_ || (called_ > 0 && !tasks_.empty()); });
            --idle_;
            if (called_ > 0) --called_;
            meter.reset();
            while (!tasks_.empty() && (inHand_.size() < limit() || engaged() < limit())) doOne(lock, thread, meter);
            // Whoever is still on the way comes too late.
            called_ = 0;
            ++idle_;
            if (!tasks_.empty()) watchOver();
            if (isEnding_) return;
        }
    }

    void doOne(std::unique_lock<std::mutex>& lock, pid_t thread, WaitMeter& meter) {
        Task task = std::move(tasks_.front());
        tasks_.pop_front();
        const auto place = inHand_.insert(inHand_.end(), {thread, Clock::now()});
        const std::size_t called = isSlow_ ? summon() : 0;
        lock.unlock();
        wake(called);
        task();
        task = nullptr;
        bool isSlow = Clock::now() - place->since > promptTime;
        if (isSlow) {
            // What takes long because there is much of it gains nothing from more threads.
            isSlow = meter.hasWaited();
            meter.reset();
        }
        lock.lock();
        promptInARow_ = isSlow ? 0 : promptInARow_ + 1;
        isSlow_ = isSlow || (isSlow_ && promptInARow_ < sideBySide_);
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
            const auto isHeld = [now](const Hand& hand) {
                return hand.since < now - firstLook && hand.since > now - leftBehindAfter && isWaiting(hand.thread);
            };
            isSlow_ = isSlow_ || std::any_of(inHand_.begin(), inHand_.end(), isHeld);
            wake(summon());
        }
    }

    const std::size_t sideBySide_;
    const std::size_t most_;
    const std::size_t whilePrompt_;
    std::mutex mutex_;
    std::condition_variable workers_;
    std::condition_variable watcher_;
    std::deque<Task> tasks_;
    std::list<Hand> inHand_;
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;    ///< those without a task, called or not
    std::size_t called_ = 0;  ///< those of them that are on their way to one
    bool isSlow_ = false;
    std::size_t promptInARow_ = 0;
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
