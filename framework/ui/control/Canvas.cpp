// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/Canvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QWidget>
#include <utility>

#include "framework/core/threads/Dispatch.h"
#include "framework/ui/control/AccessibleRole.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/NativePicture.h"

namespace framework {

/// The widget of a canvas. It may outlive the canvas in its window, and then shows nothing.
class Canvas::Area : public QWidget, public native::AccessibleRole {
  public:
    explicit Area(Canvas& canvas) : canvas_(&canvas) { setFocusPolicy(Qt::NoFocus); }

    void Forget() { canvas_ = nullptr; }
    QAccessible::Role Role() const override { return QAccessible::Graphic; }
    void SetFocusPolicyBit(Qt::FocusPolicy bit, bool on) {
        const int others = focusPolicy() & ~bit;
        setFocusPolicy(static_cast<Qt::FocusPolicy>(on ? others | bit : others));
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        if (!canvas_) return;
        const Ref<Canvas> alive(canvas_);
        const internal::NoYield noYield;
        QPainter painter(this);
        // What ClearRect erases with.
        painter.setBackground(palette().brush(backgroundRole()));
        painter.scale(native::LayoutScale(), native::LayoutScale());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (alive->backdrop_) painter.drawImage(0, 0, native::ToQImage(alive->backdrop_));
        framework::Graphics graphics(painter, alive->Width(), alive->Height());
        alive->OnPaint.Raise(graphics);
        painter.resetTransform();
        if (alive->useFocusRing_ && hasFocus()) {
            QStyleOptionFocusRect ring;
            ring.initFrom(this);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
        }
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (!canvas_ || event->button() != Qt::LeftButton) return;
        const Ref<Canvas> alive(canvas_);
        const QPoint place = event->position().toPoint();
        alive->OnDoubleClick.Raise(native::FromToolkit(place.x()), native::FromToolkit(place.y()));
    }

    bool focusNextPrevChild(bool next) override {
        return canvas_ && canvas_->acceptTabs_ ? false : QWidget::focusNextPrevChild(next);
    }

  private:
    Canvas* canvas_;
};

Canvas::Canvas() : RectControl(new Area(*this)) {}

Canvas::~Canvas() {
    if (Native()) static_cast<Area*>(Native())->Forget();
}

void Canvas::Backdrop(Ref<Picture> picture) {
    backdrop_ = std::move(picture);
    Refresh();
}

Graphics Canvas::Graphics() {
    return {[control = Ref<RectControl>(this)] { control->Refresh(); }, Width(), Height()};
}

bool Canvas::TabStop() const {
    return (Native()->focusPolicy() & Qt::TabFocus) != 0;
}

void Canvas::TabStop(bool stop) {
    static_cast<Area*>(Native())->SetFocusPolicyBit(Qt::TabFocus, stop);
}

bool Canvas::AcceptFocus() const {
    return (Native()->focusPolicy() & Qt::ClickFocus) != 0;
}

void Canvas::AcceptFocus(bool accept) {
    static_cast<Area*>(Native())->SetFocusPolicyBit(Qt::ClickFocus, accept);
}

void Canvas::EraseBackground(bool erase) {
    eraseBackground_ = erase;
    Native()->setAttribute(Qt::WA_OpaquePaintEvent, !erase);
}

void Canvas::UseFocusRing(bool use) {
    useFocusRing_ = use;
    Refresh();
}

}  // namespace framework
