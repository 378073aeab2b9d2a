// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"

namespace framework {

/// A source of random numbers that is seeded by the system, and fit for names and nonces that nobody shall guess.
class Random : public Object {
  public:
    /// A whole number from `least` to `most`, both among them, each as likely as the other. Bounds given the wrong way
    /// round are exchanged.
    int InRange(int least, int most);
};

/// A random double from 0 up to but not including 1.
double Rnd();

}  // namespace framework
