// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/time/Timer.h"

#include <QTimer>
#include <algorithm>

#include "framework/core/objects/Ref.h"

namespace framework {

class Timer::Clock : public QTimer {};

Timer::Timer() : clock_(std::make_unique<Clock>()) {
    clock_->setTimerType(Qt::PreciseTimer);  // the others may fire before their time
    clock_->callOnTimeout([this] {
        const Ref<Timer> alive(this);
        if (mode_ == ModeSingle) mode_ = ModeOff;
        OnAction.Raise(*this);
    });
}

Timer::~Timer() = default;

int Timer::Mode() const {
    return mode_;
}

void Timer::Mode(int mode) {
    if (mode == mode_) return;
    mode_ = mode;
    if (mode == ModeOff) {
        clock_->stop();
        return;
    }
    clock_->setSingleShot(mode == ModeSingle);
    clock_->start(period_);
}

int Timer::Period() const {
    return period_;
}

void Timer::Period(int milliseconds) {
    const int period = std::max(1, milliseconds);
    if (period == period_) return;
    period_ = period;
    if (mode_ != ModeOff) clock_->start(period_);
}

}  // namespace framework
