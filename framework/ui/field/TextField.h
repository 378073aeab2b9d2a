// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/TextControl.h"
#include "framework/ui/field/EditTarget.h"

namespace framework {

/// A field of one line of text that a person can edit.
class TextField : public TextControl, public EditTarget {
  public:
    TextField();

    /// The text changed, by a person or by the program.
    Event<void(TextField& sender)> OnTextChange;

    String Text() const;
    void Text(const String& text);
    bool ReadOnly() const;
    void ReadOnly(bool readOnly);

    bool CanEdit(Command command) const override;
    void Edit(Command command) override;
};

}  // namespace framework
