// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/Fiber.h"

#include <cxxabi.h>

#include <boost/version.hpp>
#include <cassert>
#include <exception>
#include <utility>

#include "framework/core/threads/StackSwitch.h"

namespace framework::internal {
namespace {

/// Enough for the toolkit's deepest calls from a handler; address space only, until it is touched.
constexpr std::size_t kStackSize = 1024UL * 1024;

/// The compiler's record of exceptions in flight, which each stack needs for itself.
struct ExceptionState {
    void* caught = nullptr;
    unsigned int uncaught = 0;
};

ExceptionState& presentExceptions() {
    return *reinterpret_cast<ExceptionState*>(abi::__cxa_get_globals());
}

/// This stack's record, for as long as another stack runs.
class KeptExceptions {
  public:
    KeptExceptions() = default;
    KeptExceptions(const KeptExceptions&) = delete;
    KeptExceptions& operator=(const KeptExceptions&) = delete;
#if BOOST_VERSION < 109200  // from then on the library does so by itself
    ~KeptExceptions() {
        presentExceptions() = state_;
    }

  private:
    ExceptionState state_ = presentExceptions();
#else
    ~KeptExceptions() {}
#endif
};

}  // namespace

Fiber::Fiber(std::function<void()> body)
    : allocator_(kStackSize), stack_(allocator_.allocate()), body_(std::move(body)) {
    // The new stack is entered at once, as far as the first function on it, and left again.
    void* shadow = nullptr;
    StackBounds own;
    LeaveStack(&shadow, Bounds().bottom, stack_.size);
    self_ =
        boost::context::fiber(std::allocator_arg, boost::context::preallocated(stack_.sp, stack_.size, stack_),
                              allocator_, [this](boost::context::fiber&& caller) { return enter(std::move(caller)); });
    ArriveOnStack(shadow, &own.bottom, &own.top);
    LeaveStack(&shadow, own.bottom, own.top);
    ArriveOnStack(shadow, &own.bottom, &own.top);
}

// The stack itself is given back by the library, when the context that owns it is destroyed.
Fiber::~Fiber() {
    assert(over_);
}

boost::context::fiber Fiber::enter(boost::context::fiber&& caller) {
    ArriveOnStack(nullptr, &callerBounds_.bottom, &callerBounds_.top);
    caller_ = std::move(caller);
    presentExceptions() = {};
    body_();
    over_ = true;
    LeaveStack(nullptr, callerBounds_.bottom, callerBounds_.top);
    return std::move(caller_);
}

void Fiber::Resume() {
    void* shadow = nullptr;
    std::size_t ignored = 0;
    const KeptExceptions kept;
    LeaveStack(&shadow, Bounds().bottom, stack_.size);
    self_ = std::move(self_).resume();
    ArriveOnStack(shadow, &ignored, &ignored);
}

void Fiber::Suspend() {
    assert(std::uncaught_exceptions() == 0 && "a thread must not yield while an exception is in flight");
    const KeptExceptions kept;
    LeaveStack(&callerShadow_, callerBounds_.bottom, callerBounds_.top);
    caller_ = std::move(caller_).resume();
    ArriveOnStack(callerShadow_, &callerBounds_.bottom, &callerBounds_.top);
}

StackBounds Fiber::Bounds() const {
    const auto top = reinterpret_cast<std::size_t>(stack_.sp);
    return {top - stack_.size, top};
}

}  // namespace framework::internal
