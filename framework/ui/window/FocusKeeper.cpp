// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/FocusKeeper.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace framework::native {

FocusKeeper::FocusKeeper(QWidget& window) : window_(window) {
    QObject::connect(qApp, &QApplication::focusChanged, this, &FocusKeeper::moved);
}

void FocusKeeper::moved(QWidget* from, QWidget* to) {
    if (!from || !window_.isAncestorOf(from)) return;
    left_ = from;
    standIn_ = to;
    from->installEventFilter(this);
    QTimer::singleShot(0, this, [this] { left_ = nullptr; });
}

bool FocusKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange) enabledChanged(*static_cast<QWidget*>(watched));
    return QObject::eventFilter(watched, event);
}

void FocusKeeper::enabledChanged(QWidget& widget) {
    if (!widget.isEnabled()) {
        if (left_ == &widget) lost_ = &widget;
        return;
    }
    widget.removeEventFilter(this);
    const bool wasLost = lost_ == &widget;
    if (wasLost) lost_ = nullptr;
    if (wasLost && window_.focusWidget() == standIn_) widget.setFocus(Qt::OtherFocusReason);
}

}  // namespace framework::native
