// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/RectControl.h"

#include <QPointer>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"

namespace framework {

using native::ToToolkit;

/// The widget, and the knowledge of whether it still lives. A control may go in the middle of an event of its own
/// widget, so the widget goes at the event loop's next turn.
class RectControl::Handle {
  public:
    explicit Handle(QWidget* widget) : widget_(widget) {}
    ~Handle() {
        if (!widget_) return;
        widget_->hide();
        widget_->setParent(nullptr);
        widget_->deleteLater();
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    QWidget* Get() const { return widget_.data(); }

  private:
    QPointer<QWidget> widget_;
};

RectControl::RectControl(QWidget* widget) : handle_(std::make_unique<Handle>(widget)) {}

RectControl::~RectControl() = default;

QWidget* RectControl::Native() const {
    return handle_->Get();
}

String RectControl::Name() const {
    return native::FromQt(Native()->objectName());
}

void RectControl::Name(const String& name) {
    Native()->setObjectName(native::ToQt(name));
    UpdateAccessibleName();
}

bool RectControl::Enabled() const {
    return Native()->isEnabled();
}

void RectControl::Enabled(bool enabled) {
    Native()->setEnabled(enabled);
}

bool RectControl::Visible() const {
    return !Native()->isHidden();
}

void RectControl::Visible(bool visible) {
    Native()->setVisible(visible);
}

void RectControl::Refresh(bool) {
    Native()->update();
}

int RectControl::Left() const {
    return native::FromToolkit(Native()->x());
}

void RectControl::Left(int left) {
    Place(left, Top(), Width(), Height());
}

int RectControl::Top() const {
    return native::FromToolkit(Native()->y());
}

void RectControl::Top(int top) {
    Place(Left(), top, Width(), Height());
}

int RectControl::Width() const {
    return native::FromToolkit(Native()->width());
}

void RectControl::Width(int width) {
    Place(Left(), Top(), width, Height());
}

int RectControl::Height() const {
    return native::FromToolkit(Native()->height());
}

void RectControl::Height(int height) {
    Place(Left(), Top(), Width(), height);
}

void RectControl::Place(int left, int top, int width, int height) {
    const QWidget* content = Native()->parentWidget();
    const QSize size = content ? content->size() : QSize(0, 0);
    placement_ = {ToToolkit(left), ToToolkit(top), ToToolkit(width), ToToolkit(height), size.width(), size.height()};
    Native()->setGeometry(placement_.Left, placement_.Top, placement_.Width, placement_.Height);
}

void RectControl::Follow(int contentWidth, int contentHeight) {
    const auto follow = [](int start, int extent, int growth, bool lockStart, bool lockEnd) {
        if (!lockEnd) return std::pair(start, extent);
        return lockStart ? std::pair(start, std::max(0, extent + growth)) : std::pair(start + growth, extent);
    };
    auto [left, width] =
        follow(placement_.Left, placement_.Width, contentWidth - placement_.ContentWidth, locks_.Left, locks_.Right);
    if (const int least = ToToolkit(leastLeft_); left < least) {
        width = std::max(left + width - least, std::min(ToToolkit(leastWidth_), width));
        left = least;
    }
    const auto [top, height] =
        follow(placement_.Top, placement_.Height, contentHeight - placement_.ContentHeight, locks_.Top, locks_.Bottom);
    Native()->setGeometry(left, top, width, height);
}

String RectControl::HelpTag() const {
    return helpTag_;
}

void RectControl::HelpTag(const String& text) {
    helpTag_ = text;
    Native()->setToolTip(native::ToToolTip(native::ToQt(text)));
    UpdateAccessibleName();
}

String RectControl::AccessibleName() const {
    return native::FromQt(Native()->accessibleName());
}

void RectControl::AccessibleName(const String& name) {
    accessibleName_ = name;
    UpdateAccessibleName();
}

void RectControl::UpdateAccessibleName() {
    String name = accessibleName_;
    if (name.IsEmpty()) name = OwnText();
    const bool saysHelpTag = name.IsEmpty();
    if (name.IsEmpty()) name = helpTag_;
    Native()->setAccessibleName(native::ToQt(name));
    Native()->setAccessibleDescription(saysHelpTag ? QString() : native::ToQt(helpTag_));
}

}  // namespace framework
