// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/NormalBounds.h"

#include <QEvent>
#include <QTimerEvent>
#include <QWidget>

namespace framework::native {
namespace {

/// How long bounds must stand, in milliseconds, before they count: longer than a window manager takes from the new size
/// of a window that it maximises to its new state.
constexpr int kSettling = 300;

}  // namespace

NormalBounds::NormalBounds(QWidget& window) : window_(window) {
    window.installEventFilter(this);
}

bool NormalBounds::isFilling() const {
    return (window_.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
}

QRect NormalBounds::Get() const {
    return isFilling() && bounds_.isValid() ? bounds_ : QRect(window_.pos(), window_.size());
}

void NormalBounds::Fill(Qt::WindowState how, bool fills) {
    note();
    window_.setWindowState(fills ? window_.windowState() | how : window_.windowState() & ~Qt::WindowStates(how));
}

void NormalBounds::note() {
    settling_.stop();
    bounds_ = Get();
}

bool NormalBounds::eventFilter(QObject* watched, QEvent* event) {
    const bool moves = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (moves && !isFilling()) settling_.start(kSettling, this);
    return QObject::eventFilter(watched, event);
}

void NormalBounds::timerEvent(QTimerEvent* event) {
    if (event->timerId() == settling_.timerId()) note();
}

}  // namespace framework::native
