// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/ButtonControl.h"

namespace framework {

/// A choice of which, among all radio buttons of its window, one can hold.
class RadioButton : public ButtonControl {
  public:
    RadioButton();

    /// A person chose the button. A change made by the program raises nothing.
    Event<void(RadioButton& sender)> OnAction;

    /// Choosing one takes the choice from the others.
    bool Value() const;
    void Value(bool value);

  protected:
    void Pressed() override { OnAction.Raise(*this); }
};

}  // namespace framework
