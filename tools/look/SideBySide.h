// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "tools/disk/DiskPool.h"

namespace marrowbeck::tools {

/// Whoever asked does not want to know any more.
using Dropped = std::shared_ptr<const std::atomic<bool>>;

inline Dropped nobodyDrops() {
    return std::make_shared<std::atomic<bool>>(false);
}

/// Asks the disk many things at once, as one request. Those that it does not answer while it answers others keep the
/// rest no longer than `straggling`; where it answers nothing at all, `silence` is waited.
template <class Answer>
class SideBySide {
  public:
    static constexpr std::chrono::seconds straggling{3};
    static constexpr std::chrono::seconds silence{30};

    using Question = std::function<Answer()>;

    /// The answers, in the order of the questions; `unanswered` for what did not come.
    static std::vector<Answer> ask(std::vector<Question> questions, const Answer& unanswered, const Dropped& dropped) {
        const auto answers = std::make_shared<SideBySide>(questions.size(), unanswered);
        std::vector<DiskPool::Task> tasks;
        tasks.reserve(questions.size());
        for (std::size_t i = 0; i < questions.size(); ++i) {
            tasks.push_back([answers, dropped, i, question = std::move(questions[i])] {
                if (*dropped || answers->isOver()) return;
                answers->set(i, question());
            });
        }
        // Of its own: what hangs in one request leaves no fewer threads for the next.
        DiskPool pool;
        pool.add(std::move(tasks));
        return answers->wait(dropped);
    }

    SideBySide(std::size_t count, const Answer& unanswered) : answers_(count, unanswered), missing_(count) {}

  private:
    using Clock = std::chrono::steady_clock;

    bool isOver() {
        const std::lock_guard lock(mutex_);
        return over_;
    }

    void set(std::size_t i, Answer answer) {
        const std::lock_guard lock(mutex_);
        if (over_) return;
        answers_[i] = std::move(answer);
        last_ = Clock::now();
        answered_ = true;
        if (--missing_ == 0) came_.notify_all();
    }

    std::vector<Answer> wait(const Dropped& dropped) {
        std::unique_lock lock(mutex_);
        while (missing_ > 0 && !*dropped) {
            const auto end = last_ + (answered_ ? straggling : silence);
            const auto now = Clock::now();
            if (now >= end) break;
            came_.wait_until(lock, std::min<Clock::time_point>(end, now + std::chrono::seconds(1)));
        }
        over_ = true;
        return std::move(answers_);
    }

    std::mutex mutex_;
    std::condition_variable came_;
    std::vector<Answer> answers_;
    std::size_t missing_;
    Clock::time_point last_ = Clock::now();
    bool answered_ = false;
    bool over_ = false;
};

}  // namespace marrowbeck::tools
