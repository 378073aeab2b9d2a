// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/ButtonControl.h"

namespace framework {

/// A box that a person ticks.
class CheckBox : public ButtonControl {
  public:
    enum : int { Unchecked = 0, Checked = 1, Indeterminate = 2 };

    CheckBox();

    /// A person changed the box. A change made by the program raises nothing.
    Event<void(CheckBox& sender)> OnAction;

    /// Whether the box is ticked.
    bool Value() const { return State() == Checked; }
    void Value(bool value) { State(value ? Checked : Unchecked); }
    int State() const;
    void State(int state);

  protected:
    void Pressed() override;
};

}  // namespace framework
