// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/menu/ToolItem.h"

#include <QAction>

#include "framework/ui/drawing/Native.h"
#include "framework/ui/drawing/NativePicture.h"
#include "framework/ui/drawing/Picture.h"

namespace framework {

ToolItem::ToolItem() : action_(std::make_unique<QAction>()) {
    Caption(caption_);
}

ToolItem::~ToolItem() = default;

void ToolItem::Name(const String& name) {
    name_ = name;
    action_->setObjectName(native::ToQt(name));
}

void ToolItem::Caption(const String& caption) {
    caption_ = caption;
    action_->setText(native::ToQtLiteral(caption));
    action_->setIconText(native::ToQtLiteral(caption));
}

void ToolItem::HelpTag(const String& text) {
    helpTag_ = text;
    action_->setToolTip(native::ToToolTip(native::ToQt(text)));
}

Ref<Picture> ToolItem::Icon() const {
    return As<Picture>(icon_);
}

void ToolItem::Icon(const Ref<Picture>& icon) {
    icon_ = icon;
    action_->setIcon(native::ToQIcon(icon));
}

bool ToolItem::Enabled() const {
    return action_->isEnabled();
}

void ToolItem::Enabled(bool enabled) {
    action_->setEnabled(enabled);
}

}  // namespace framework
