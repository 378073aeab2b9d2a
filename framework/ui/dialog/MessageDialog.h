// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

/// One of the three buttons of a MessageDialog.
class MessageDialogButton : public Object {
  public:
    MessageDialogButton(const String& caption, bool visible) : caption_(caption), visible_(visible) {}

    String Caption() const { return caption_; }
    void Caption(const String& caption) { caption_ = caption; }
    bool Visible() const { return visible_; }
    void Visible(bool visible) { visible_ = visible; }

  private:
    String caption_;
    bool visible_;
};

/// A question with up to three answers.
class MessageDialog : public Object {
  public:
    enum : int { IconNone = -1, IconNote = 0, IconCaution = 1, IconStop = 2, IconQuestion = 3 };

    String Title() const { return title_; }
    void Title(const String& title) { title_ = title; }
    String Message() const { return message_; }
    void Message(const String& message) { message_ = message; }
    /// Said below the message, less loudly. A long one scrolls.
    String Explanation() const { return explanation_; }
    void Explanation(const String& explanation) { explanation_ = explanation; }
    int Icon() const { return icon_; }
    void Icon(int icon) { icon_ = icon; }

    /// The Return key's button, "OK".
    const Ref<MessageDialogButton>& ActionButton() const { return actionButton_; }
    /// A second way to go on; not visible at first.
    const Ref<MessageDialogButton>& AlternateActionButton() const { return alternateButton_; }
    /// The Escape key's button, "Cancel"; not visible at first.
    const Ref<MessageDialogButton>& CancelButton() const { return cancelButton_; }

    /// Shows the dialog above all windows and returns the button that was pressed. A program that quits meanwhile
    /// counts as Cancel. On a background thread, that thread waits.
    Ref<MessageDialogButton> ShowModal();

  private:
    String title_;
    String message_;
    String explanation_;
    int icon_ = IconNone;
    Ref<MessageDialogButton> actionButton_ = New<MessageDialogButton>("OK", true);
    Ref<MessageDialogButton> alternateButton_ = New<MessageDialogButton>("Don't Save", false);
    Ref<MessageDialogButton> cancelButton_ = New<MessageDialogButton>("Cancel", false);
};

}  // namespace framework
