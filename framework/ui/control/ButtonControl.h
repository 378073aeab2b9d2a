// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/control/TextControl.h"

class QAbstractButton;

namespace framework {

/// Base of the controls that are pressed: their caption, and the way from a press to their event.
class ButtonControl : public TextControl {
  public:
    String Caption() const { return caption_; }
    void Caption(const String& caption);

  protected:
    explicit ButtonControl(QAbstractButton* button);

    /// A person pressed the button, by mouse, key or an aid. A change made by the program is no press.
    virtual void Pressed() = 0;
    String OwnText() const override { return caption_; }
    QAbstractButton& Button() const;

  private:
    String caption_;
};

}  // namespace framework
