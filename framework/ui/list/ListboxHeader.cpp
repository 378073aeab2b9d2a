// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxHeader.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace framework {

ListboxHeader::ListboxHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    // A click leaves the keyboard with the rows.
    setFocusPolicy(Qt::TabFocus);
}

int ListboxHeader::Current() const {
    return std::min(current_, count() - 1);
}

void ListboxHeader::Current(int column) {
    if (column < 0 || column >= count()) return;
    current_ = column;
    viewport()->update();
    if (hasFocus()) announce();
}

void ListboxHeader::Press(int column) {
    Current(column);
    emit sectionClicked(column);
}

void ListboxHeader::keyPressEvent(QKeyEvent* event) {
    const int step = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
        case Qt::Key_Left:
            return Current(Current() - step);
        case Qt::Key_Right:
            return Current(Current() + step);
        case Qt::Key_Home:
            return Current(0);
        case Qt::Key_End:
            return Current(count() - 1);
        case Qt::Key_Down:
            return parentWidget()->setFocus(Qt::OtherFocusReason);
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (Current() >= 0) Press(Current());
            return;
        default:
            // For the rows, or for the window.
            event->ignore();
    }
}

void ListboxHeader::focusInEvent(QFocusEvent* event) {
    QHeaderView::focusInEvent(event);
    viewport()->update();
    announce();
}

void ListboxHeader::focusOutEvent(QFocusEvent* event) {
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

void ListboxHeader::paintSection(QPainter* painter, const QRect& place, int column) const {
    painter->save();
    QHeaderView::paintSection(painter, place, column);
    painter->restore();
    if (!hasFocus() || column != Current()) return;
    constexpr int kFrame = 2;
    painter->save();
    painter->setPen(QPen(palette().color(QPalette::Highlight), kFrame));
    painter->drawRect(place.adjusted(1, 1, -1, -1));
    painter->restore();
}

/// Tells a screen reader at which heading the keyboard is.
void ListboxHeader::announce() {
    if (!QAccessible::isActive() || Current() < 0) return;
    QAccessibleEvent event(parentWidget(), QAccessible::Focus);
    // The list's first child stands in the corner of all headings.
    event.setChild(Current() + 1);
    QAccessible::updateAccessibility(&event);
}

}  // namespace framework
