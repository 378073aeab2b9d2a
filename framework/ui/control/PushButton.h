// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/ButtonControl.h"

namespace framework {

/// A button that does something when pressed.
class PushButton : public ButtonControl {
  public:
    PushButton();

    Event<void(PushButton& sender)> OnAction;

    /// Whether the Return key presses it, wherever in the window the focus is.
    bool Default() const;
    void Default(bool isDefault);
    /// Whether the Escape key presses it.
    bool Cancel() const { return cancel_; }
    void Cancel(bool cancel) { cancel_ = cancel; }
    /// Kept for its owner; all push buttons look as the desktop draws them.
    int ButtonStyle() const { return buttonStyle_; }
    void ButtonStyle(int style) { buttonStyle_ = style; }

    /// Presses the button as a person would; nothing happens when it is disabled.
    void Push();

  protected:
    void Pressed() override { OnAction.Raise(*this); }

  private:
    bool cancel_ = false;
    int buttonStyle_ = 0;
};

}  // namespace framework
