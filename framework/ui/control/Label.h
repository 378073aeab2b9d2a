// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

#include "framework/core/objects/Color.h"
#include "framework/ui/control/TextControl.h"

namespace framework {

/// A text that a person can read and not change. Text that would be hard to read on its window, dark on dark, is shown
/// on a small plate of its own.
class Label : public TextControl {
  public:
    Label();

    String Text() const { return text_; }
    void Text(const String& text);
    /// The same text under its older name.
    String Caption() const { return Text(); }
    void Caption(const String& text) { Text(text); }

    /// Until it is set, the window's own colour for texts.
    Color TextColor() const;
    void TextColor(Color color);
    int TextAlign() const;
    void TextAlign(int align);
    /// Whether a long text goes on in the next line; otherwise it is cut short at its end.
    bool Multiline() const;
    void Multiline(bool multiline);

  protected:
    String OwnText() const override { return Text(); }

  private:
    String text_;
    std::optional<Color> ownColor_;
};

/// Labels under their older name.
using StaticText = Label;

}  // namespace framework
