// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

class Window;

/// Lets a person choose a folder.
class SelectFolderDialog : public Object {
  public:
    /// The caption of the button that chooses.
    String ActionButtonCaption() const { return actionButtonCaption_; }
    void ActionButtonCaption(const String& caption) { actionButtonCaption_ = caption; }
    String Title() const { return title_; }
    void Title(const String& title) { title_ = title; }
    /// Said above the folders.
    String PromptText() const { return promptText_; }
    void PromptText(const String& text) { promptText_ = text; }
    /// Where the dialog opens; the user's home without one, when it is no folder, and when its disk does not tell that
    /// within a second.
    Ref<FolderItem> InitialDirectory() const { return initialDirectory_; }
    void InitialDirectory(const Ref<FolderItem>& folder) { initialDirectory_ = folder; }

    /// Shows the dialog over `window` and returns the chosen folder, or Nil when it was cancelled. Nil for the window
    /// gives a dialog over all windows. On a background thread, that thread waits.
    Ref<FolderItem> ShowModalWithin(const Ref<Window>& window);
    Ref<FolderItem> ShowModal();

  private:
    String actionButtonCaption_;
    String title_;
    String promptText_;
    Ref<FolderItem> initialDirectory_;
};

}  // namespace framework
