// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <type_traits>
#include <utility>

#include "framework/core/threads/Dispatch.h"

namespace framework {

template <class Signature>
class Event;

/// An event of a framework object. Its owner binds one handler by assignment; raising it without one gives the
/// default value of its result. Main thread, as all events are.
template <class Result, class... Arguments>
class Event<Result(Arguments...)> {
  public:
    using Handler = std::function<Result(Arguments...)>;

    Event& operator=(Handler handler) {
        handler_ = std::move(handler);
        return *this;
    }
    explicit operator bool() const { return static_cast<bool>(handler_); }

    /// Calls the handler through the door; when it raises, the result is the default value.
    Result Raise(Arguments... arguments) const {
        if constexpr (std::is_void_v<Result>) {
            if (handler_) Dispatch([&] { handler_(arguments...); });
        } else {
            Result result{};
            if (handler_) Dispatch([&] { result = handler_(arguments...); });
            return result;
        }
    }

  private:
    Handler handler_;
};

}  // namespace framework
