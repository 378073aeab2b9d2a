// SPDX-License-Identifier: GPL-2.0-or-later
// What a person does to a list with mouse and keys.

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <optional>
#include <utility>

#include "framework/core/text/Characters.h"
#include "framework/ui/control/ContextualClick.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/list/Listbox.h"
#include "framework/ui/list/ListboxChangeScope.h"
#include "framework/ui/menu/MenuItem.h"

namespace framework {
namespace {

/// Without regard to case, and at a glance for most texts: all rows of a list may have to be looked at.
bool beginsWith(const String& text, const String& start) {
    if (text.IsAscii() && start.IsAscii()) {
        const auto same = [](char one, char other) { return FoldAscii(one) == FoldAscii(other); };
        return text.ByteCount() >= start.ByteCount() &&
               std::equal(start.Bytes().begin(), start.Bytes().end(), text.Bytes().begin(), same);
    }
    return native::ToQt(text).startsWith(native::ToQt(start), Qt::CaseInsensitive);
}

}  // namespace

void ListboxView::headingClicked(int column) {
    columns_->Choose(column);
    if (!list_) return;
    const Ref<Listbox> alive(list_);
    if (!alive->OnSortColumn.Raise(column)) SortInBackground();
}

// Mouse

void ListboxView::mousePressEvent(QMouseEvent* event) {
    const internal::ContextualClick contextual(event->button() == Qt::RightButton);
    const ChangeScope scope(*this);
    leftDown_ = false;
    scrollAtRelease_.reset();
    const QPoint place = event->position().toPoint();
    swallowed_ = raiseMouseDown(place);
    if (swallowed_) return;
    leftDown_ = event->button() == Qt::LeftButton;
    pressedRow_ = indexAt(place).isValid();
    QTableView::mousePressEvent(event);
}

bool ListboxView::raiseMouseDown(const QPoint& place) {
    if (!list_) return false;
    const Ref<Listbox> alive(list_);
    const QPoint inList = viewport()->mapTo(this, place);
    return alive->OnMouseDown.Raise(inList.x(), inList.y());
}

void ListboxView::mouseMoveEvent(QMouseEvent* event) {
    if (swallowed_) return;
    const ChangeScope scope(*this);
    QTableView::mouseMoveEvent(event);
}

void ListboxView::mouseReleaseEvent(QMouseEvent* event) {
    if (!std::exchange(swallowed_, false)) {
        const ChangeScope scope(*this);
        QTableView::mouseReleaseEvent(event);
    }
    endPress();
}

void ListboxView::endPress() {
    leftDown_ = false;
    if (const auto row = std::exchange(scrollAtRelease_, std::nullopt)) TopRow(*row);
}

// The first click may have scrolled the list, so that the second falls on another row: the row first clicked is meant.
void ListboxView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressedRow_) {
        mousePressEvent(event);
        return;
    }
    swallowed_ = true;
    if (!list_) return;
    const Ref<Listbox> alive(list_);
    alive->OnDoubleClick.Raise();
}

// Contextual menu

void ListboxView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Mouse) {
        openContextualMenu(event->globalPos());
    } else {
        openContextualMenuAtRow();
    }
}

void ListboxView::openContextualMenuAtRow() {
    const QRect row = visualRect(currentIndex());
    const bool inSight = viewport()->rect().contains(row.bottomLeft());
    const QPoint place = inSight ? row.bottomLeft() : viewport()->rect().topLeft();
    openContextualMenu(viewport()->mapToGlobal(QPoint(std::max(place.x(), 0), place.y())));
}

void ListboxView::openContextualMenu(const QPoint& place) {
    if (!list_) return;
    const Ref<Listbox> alive(list_);
    const Ref<MenuItem> base = New<MenuItem>();
    const QPoint inList = mapFromGlobal(place);
    bool wanted = false;
    {
        const internal::ContextualClick contextual(true);
        wanted = alive->OnConstructContextualMenu.Raise(base, inList.x(), inList.y());
    }
    if (!wanted || base->Count() == 0) return;
    // The menu runs a loop of events, in which this very widget may go.
    const Ref<MenuItem> chosen = base->PopUp(place.x(), place.y());
    if (chosen && !alive->OnContextualMenuAction.Raise(chosen)) chosen->Choose();
}

// Keys

void ListboxView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // The window's default button is meant.
        event->ignore();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        openContextualMenuAtRow();
    } else if (event->matches(QKeySequence::Copy)) {
        if (list_) list_->Edit(EditTarget::Command::Copy);
    } else if ((event->matches(QKeySequence::MoveToNextLine) || event->matches(QKeySequence::MoveToPreviousLine)) &&
               currentIndex().isValid() && SelectedCount() == 0) {
        // The first arrow key in a fresh list selects the row that the keyboard is at, not the one behind it.
        SelectOnly(currentIndex().row());
    } else {
        const ChangeScope scope(*this);
        QTableView::keyPressEvent(event);
    }
}

// Home and End mean the first and the last row, not the first and last cell of a row.
QModelIndex ListboxView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action != MoveHome && action != MoveEnd) return QTableView::moveCursor(action, modifiers);
    // The toolkit would go to the first or last column as well, and scroll there.
    const QModelIndex end = QTableView::moveCursor(action, modifiers | Qt::ControlModifier);
    return end.siblingAtColumn(std::max(currentIndex().column(), 0));
}

// The toolkit's own search makes a value of every cell that it looks at.
void ListboxView::keyboardSearch(const QString& text) {
    model_.Announce();
    const int count = model_.rowCount();
    if (count == 0 || text.isEmpty()) return;
    const bool goesOn = sinceSearch_.isValid() && !sinceSearch_.hasExpired(QApplication::keyboardInputInterval());
    sinceSearch_.start();
    const QString before = goesOn ? searched_ : QString();
    // The same letter again and again goes through the rows that begin with it.
    const bool repeats = before.size() > 0 && before.count(text) * text.size() == before.size();
    searched_ = before + text;

    const int current = std::max(currentIndex().row(), 0);
    const bool fresh = before.isEmpty() && currentIndex().isValid();
    int found = findByStart(searched_, (current + (fresh ? 1 : 0)) % count);
    if (found < 0 && repeats) found = findByStart(text, (current + 1) % count);
    if (found < 0) return;
    const ChangeScope scope(*this);
    const int column = std::max(currentIndex().column(), 0);
    // By a step of the toolkit's own: it keeps to itself from where Shift and the arrows select.
    const bool fromAbove = found > 0;
    if (count > 1) {
        selectionModel()->setCurrentIndex(model_.index(found + (fromAbove ? -1 : 1), column),
                                          QItemSelectionModel::NoUpdate);
        QKeyEvent step(QEvent::KeyPress, fromAbove ? Qt::Key_Down : Qt::Key_Up, Qt::NoModifier);
        QTableView::keyPressEvent(&step);
    }
    selectionModel()->setCurrentIndex(model_.index(found, column),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

/// The first row from `from` on, and from the top again, whose first cell begins with `start`; -1 for none.
int ListboxView::findByStart(const QString& start, int from) const {
    const String wanted = native::FromQt(start);
    const int count = model_.rowCount();
    for (int i = 0; i < count; ++i) {
        const int row = (from + i) % count;
        if (beginsWith(model_.Rows().Cell(row, 0), wanted)) return row;
    }
    return -1;
}

// Dragging rows

void ListboxView::dropEvent(QDropEvent* event) {
    if (!dragsRows_ || event->source() != this) {
        event->ignore();
        return;
    }
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool behind = event->position().y() > visualRect(index).center().y();
    const int target = index.isValid() ? index.row() + (behind ? 1 : 0) : model_.rowCount();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    // Not a move to the toolkit, which would remove the rows at their old place.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    MoveRows(SelectedRows(), target);
}

}  // namespace framework
