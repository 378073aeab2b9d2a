// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <boost/context/fiber.hpp>
#include <boost/context/protected_fixedsize_stack.hpp>
#include <cstddef>
#include <functional>

namespace framework::internal {

/// The lowest and highest address of a stack.
struct StackBounds {
    std::size_t bottom = 0;
    std::size_t top = 0;
};

/// A stack of its own with a function running on it, which can be left and entered again. Knows nothing of threads,
/// time or events: those are the Scheduler's.
class Fiber {
  public:
    /// `body` runs on the new stack at the first Resume. No exception may leave it.
    explicit Fiber(std::function<void()> body);
    ~Fiber();
    Fiber(const Fiber&) = delete;
    Fiber& operator=(const Fiber&) = delete;

    /// Enters the fiber; returns when it suspends itself or its body is over.
    void Resume();
    /// Leaves the fiber that is running now. Returns at its next Resume.
    void Suspend();

    bool IsOver() const { return over_; }
    StackBounds Bounds() const;

  private:
    boost::context::fiber enter(boost::context::fiber&& caller);

    boost::context::protected_fixedsize_stack allocator_;
    boost::context::stack_context stack_;
    std::function<void()> body_;
    boost::context::fiber self_;
    boost::context::fiber caller_;
    StackBounds callerBounds_;
    void* callerShadow_ = nullptr;
    bool over_ = false;
};

}  // namespace framework::internal
