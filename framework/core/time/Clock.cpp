// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/time/Clock.h"

#include <chrono>
#include <cstdint>
#include <ratio>

namespace framework {
namespace {

using Clock = std::chrono::steady_clock;

const Clock::time_point kStart = Clock::now();

}  // namespace

int Ticks() {
    using Sixtieths = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;
    return static_cast<int>(std::chrono::floor<Sixtieths>(Clock::now() - kStart).count());
}

double Microseconds() {
    return std::chrono::duration<double, std::micro>(Clock::now() - kStart).count();
}

}  // namespace framework
