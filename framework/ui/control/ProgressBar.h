// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/control/RectControl.h"

namespace framework {

/// How far a long piece of work has come.
class ProgressBar : public RectControl {
  public:
    ProgressBar();

    /// The value at which the work is done; 0 shows that it goes on, not how far it is.
    int Maximum() const { return maximum_; }
    void Maximum(int maximum);
    /// From 0 to Maximum; a value outside shows as the nearer end.
    int Value() const { return value_; }
    void Value(int value);

  private:
    void show();

    int maximum_ = 100;
    int value_ = 0;
};

}  // namespace framework
