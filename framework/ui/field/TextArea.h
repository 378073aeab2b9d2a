// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Color.h"
#include "framework/ui/control/TextControl.h"
#include "framework/ui/field/EditTarget.h"

namespace framework {

/// A field of several lines of plain text. Text that is too long for it is cut off at its foot, where it can still be
/// reached by selecting; with scroll bars it can be scrolled too. One that can only be read takes a text of any length
/// quickly: of lines of more than some hundred characters, or of more than a thousand lines, it shows a part, with
/// marks for what is left out; its text, and what is copied from it across such a mark, are whole.
class TextArea : public TextControl, public EditTarget {
  public:
    TextArea();

    String Text() const;
    void Text(const String& text);
    /// Whether the text can be read, selected and copied, and nothing else.
    bool ReadOnly() const;
    void ReadOnly(bool readOnly);
    /// Whether there can be more than one line.
    bool Multiline() const { return multiline_; }
    void Multiline(bool multiline);
    bool Border() const;
    void Border(bool border);
    bool UseFocusRing() const;
    void UseFocusRing(bool useFocusRing);
    bool ScrollbarVertical() const;
    void ScrollbarVertical(bool scrollbar);
    bool ScrollbarHorizontal() const;
    void ScrollbarHorizontal(bool scrollbar);
    Color TextColor() const;
    void TextColor(Color color);
    Color BackColor() const;
    void BackColor(Color color);
    int Alignment() const { return alignment_; }
    void Alignment(int align);
    /// Whether a selection is not shown while the focus is elsewhere.
    bool HideSelection() const { return hideSelection_; }
    void HideSelection(bool hide);
    /// The most characters that a person can type; 0 is no limit.
    int LimitText() const { return limitText_; }
    void LimitText(int characters) { limitText_ = characters; }
    /// Whether the Tab key types a tab instead of leaving the field.
    bool AcceptTabs() const;
    void AcceptTabs(bool accept);
    /// Kept for their owners: the text is plain, sizes are in pixels, and no spelling is checked.
    bool Styled() const { return styled_; }
    void Styled(bool styled) { styled_ = styled; }
    int TextUnit() const { return textUnit_; }
    void TextUnit(int unit) { textUnit_ = unit; }
    bool AutomaticallyCheckSpelling() const { return checkSpelling_; }
    void AutomaticallyCheckSpelling(bool check) { checkSpelling_ = check; }

    bool CanEdit(Command command) const override;
    void Edit(Command command) override;

  private:
    class Widget;

    Widget& area() const;

    String text_;
    bool multiline_ = true;
    bool hideSelection_ = true;
    bool styled_ = false;
    bool checkSpelling_ = false;
    int limitText_ = 0;
    int textUnit_ = 0;
    int alignment_ = AlignLeft;
};

}  // namespace framework
