// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <exception>
#include <utility>

namespace framework {

/// Thrown at a yield of a thread that is being killed, so that its destructors run. No part of the program catches it,
/// and a `catch (...)` on a thread's way must rethrow it.
class ThreadKilled {};

namespace internal {

/// While one lives, yields of this thread do nothing: for code that the toolkit called and must return to in one go
/// (painting, a model in the middle of a change, an event filter).
class NoYield {
  public:
    NoYield() noexcept;
    ~NoYield();
    NoYield(const NoYield&) = delete;
    NoYield& operator=(const NoYield&) = delete;
};

/// Hands an exception that nothing caught to the application. When the application does not want it, an alert names
/// the exception and the program quits in order.
void HandleStray(const std::exception_ptr& stray) noexcept;

/// Whether a thread other than the main one is running.
bool OnThread() noexcept;

}  // namespace internal

/// The one door through which events reach handlers: toolkit, then here, then handler. Every exception stops here and
/// goes to the application; the kill of a thread stops here too and takes effect at the thread's next yield.
template <class Handler>
void Dispatch(Handler&& handler) noexcept {
    std::exception_ptr stray;
    try {
        std::forward<Handler>(handler)();
    } catch (const ThreadKilled&) {
        return;
    } catch (...) {
        stray = std::current_exception();
    }
    if (stray) internal::HandleStray(stray);
}

}  // namespace framework
