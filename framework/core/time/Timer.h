// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "framework/core/objects/Object.h"
#include "framework/core/threads/Event.h"

namespace framework {

/// Raises its event after a time, once or again and again, on the main thread.
class Timer : public Object {
  public:
    enum : int { ModeOff = 0, ModeSingle = 1, ModeMultiple = 2 };

    Timer();
    ~Timer() override;

    Event<void(Timer& sender)> OnAction;

    /// Off, once, or repeatedly. Setting it to anything but off starts the period; where it is that already the period
    /// goes on, so that a timer armed again and again fires all the same. After a single firing it is off.
    int Mode() const;
    void Mode(int mode);

    /// The time until it fires, in milliseconds, at least 1. A waiting timer starts a new period that differs from its
    /// old one at once.
    int Period() const;
    void Period(int milliseconds);

  private:
    class Clock;
    std::unique_ptr<Clock> clock_;
    int mode_ = ModeOff;
    int period_ = 1000;
};

}  // namespace framework
