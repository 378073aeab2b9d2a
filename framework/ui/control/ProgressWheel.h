// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/control/RectControl.h"

namespace framework {

/// A turning wheel that says that work is going on. It turns while it is visible.
class ProgressWheel : public RectControl {
  public:
    ProgressWheel();

  protected:
    String OwnText() const override { return "Working"; }
};

}  // namespace framework
