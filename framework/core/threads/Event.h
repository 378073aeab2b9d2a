// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <type_traits>
#include <utility>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/threads/Dispatch.h"

namespace framework {

template <class Signature>
class Event;

/// An event of a framework object. Its owner binds one handler by assignment, which may come from that handler itself;
/// raising it without one gives the default value of its result. Main thread, as all events are.
template <class Result, class... Arguments>
class Event<Result(Arguments...)> {
  public:
    using Handler = std::function<Result(Arguments...)>;

    Event& operator=(Handler handler) {
        bound_ = handler ? New<Bound>(std::move(handler)) : Ref<Bound>();
        return *this;
    }
    explicit operator bool() const { return static_cast<bool>(bound_); }

    /// Calls the handler through the door; when it raises, the result is the default value.
    Result Raise(Arguments... arguments) const {
        // Held here, since the handler may bind another one, or drop the owner of this event.
        const Ref<Bound> bound = bound_;
        if constexpr (std::is_void_v<Result>) {
            if (bound) Dispatch([&] { bound->handler(arguments...); });
        } else {
            Result result{};
            if (bound) Dispatch([&] { result = bound->handler(arguments...); });
            return result;
        }
    }

  private:
    struct Bound : Object {
        explicit Bound(Handler given) : handler(std::move(given)) {}
        Handler handler;
    };

    Ref<Bound> bound_;
};

}  // namespace framework
