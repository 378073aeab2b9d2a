// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

class QAction;

namespace framework {

class Picture;

/// One place in a Toolbar: a button, a line or a space.
class ToolItem : public Object {
  public:
    enum : int { StylePushButton = 0, StyleSeparator = 1, StyleFlexibleSpace = 6 };

    ToolItem();
    ~ToolItem() override;

    String Name() const { return name_; }
    void Name(const String& name);
    /// The text below the icon.
    String Caption() const { return caption_; }
    void Caption(const String& caption);
    String HelpTag() const { return helpTag_; }
    void HelpTag(const String& text);
    Ref<Picture> Icon() const;
    void Icon(const Ref<Picture>& icon);
    bool Enabled() const;
    void Enabled(bool enabled);
    /// To be set before the item is appended to a toolbar.
    int Style() const { return style_; }
    void Style(int style) { style_ = style; }

    /// The toolkit's action. For the framework alone.
    QAction& Native() const { return *action_; }

  private:
    std::unique_ptr<QAction> action_;
    Ref<Object> icon_;
    String name_;
    String caption_ = "Untitled";
    String helpTag_;
    int style_ = StylePushButton;
};

/// A tool item as toolbars are built from.
class ToolButton : public ToolItem {};

}  // namespace framework
