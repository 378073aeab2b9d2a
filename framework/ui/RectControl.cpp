#include "framework/ui/RectControl.h"

#include <QPointer>
#include <QWidget>

#include "framework/ui/Native.h"

namespace framework {

/// The widget, and the knowledge of whether it still lives: a window destroys the widgets that stand in it.
class RectControl::Handle {
  public:
    explicit Handle(QWidget* widget) : widget_(widget) {}
    ~Handle() {
        if (widget_ && !widget_->parent()) delete widget_.data();
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
    if (Native()->accessibleName().isEmpty()) Native()->setAccessibleName(native::ToQt(name));
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
    return Native()->x();
}

void RectControl::Left(int left) {
    Place(left, Top(), Width(), Height());
}

int RectControl::Top() const {
    return Native()->y();
}

void RectControl::Top(int top) {
    Place(Left(), top, Width(), Height());
}

int RectControl::Width() const {
    return Native()->width();
}

void RectControl::Width(int width) {
    Place(Left(), Top(), width, Height());
}

int RectControl::Height() const {
    return Native()->height();
}

void RectControl::Height(int height) {
    Place(Left(), Top(), Width(), height);
}

void RectControl::Place(int left, int top, int width, int height) {
    Native()->setGeometry(left, top, width, height);
}

String RectControl::HelpTag() const {
    return native::FromQt(Native()->toolTip());
}

void RectControl::HelpTag(const String& text) {
    Native()->setToolTip(native::ToQt(text).toHtmlEscaped());
}

String RectControl::AccessibleName() const {
    return native::FromQt(Native()->accessibleName());
}

void RectControl::AccessibleName(const String& name) {
    Native()->setAccessibleName(native::ToQt(name));
}

}  // namespace framework
