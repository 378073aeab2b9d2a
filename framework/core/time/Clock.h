// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// The sixtieths of a second since the program started. Never goes back, whatever is done to the system's time. Wraps
/// to negative numbers after 414 days.
int Ticks();

/// The same in millionths of a second, to measure with; does not wrap.
double Microseconds();

}  // namespace framework
