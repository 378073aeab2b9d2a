// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/control/RectControl.h"

namespace framework {

/// Base of the controls that show text: how that text is set.
class TextControl : public RectControl {
  public:
    /// The font family; "System" is the font that the desktop uses.
    String TextFont() const { return textFont_; }
    void TextFont(const String& family);
    /// In pixels, so that texts keep to places that are given in pixels too; 0 is the desktop's own size.
    int TextSize() const { return textSize_; }
    void TextSize(int pixels);
    bool Bold() const { return bold_; }
    void Bold(bool bold);
    bool Italic() const { return italic_; }
    void Italic(bool italic);

    /// Where a text stands between the edges.
    enum : int { AlignLeft = 0, AlignCenter = 1, AlignRight = 2 };

  protected:
    using RectControl::RectControl;

  private:
    void applyFont();

    String textFont_ = "System";
    int textSize_ = 0;
    bool bold_ = false;
    bool italic_ = false;
};

}  // namespace framework
