// SPDX-License-Identifier: GPL-2.0-or-later
// How a list looks behind and beside its cells' texts.

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <optional>

#include "framework/core/threads/Dispatch.h"
#include "framework/ui/list/Listbox.h"
#include "framework/ui/list/ListboxView.h"

namespace framework {

void ListboxView::paintEvent(QPaintEvent* event) {
    const internal::NoYield noYield;
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    paintBelowRows(painter);
    if (useFocusRing_ && hasFocus()) {
        constexpr int kFrame = 2;
        painter.setPen(QPen(palette().color(QPalette::Highlight), kFrame));
        painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

// Scrolling moves what is painted already; the frame of the focus does not belong to it.
void ListboxView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (useFocusRing_ && hasFocus()) viewport()->update();
}

/// Goes on with stripes and lines to the bottom edge, as if there were more rows.
void ListboxView::paintBelowRows(QPainter& painter) {
    const int height = verticalHeader()->defaultSectionSize();
    int row = model_.rowCount();
    for (int top = row * height - verticalHeader()->offset(); top < viewport()->height(); top += height) {
        for (int column = 0; column < model_.columnCount(); ++column) {
            const QRect cell(columnViewportPosition(column), top, columnWidth(column), height);
            if (!cell.intersects(viewport()->rect())) continue;
            std::optional<Color> covered;
            PaintBackground(painter, cell, row, column, covered);
            PaintGridLines(painter, cell);
        }
        ++row;
    }
}

bool ListboxView::PaintBackground(QPainter& painter, const QRect& cell, int row, int column,
                                  std::optional<Color>& covered) {
    if (!list_ || !list_->OnCellBackgroundPaint) return false;
    painter.save();
    painter.translate(cell.topLeft());
    painter.setClipRect(0, 0, cell.width(), cell.height(), Qt::IntersectClip);
    Graphics graphics(painter, cell.width(), cell.height());
    const bool done = list_->OnCellBackgroundPaint.Raise(graphics, row, column);
    Color color;
    if (graphics.CoveredWith(color)) covered = color;
    painter.restore();
    return done;
}

void ListboxView::PaintGridLines(QPainter& painter, const QRect& cell) {
    constexpr int kThinLine = 2;
    // Seen on light and on dark stripes alike.
    const QColor color(128, 128, 128, 96);
    if (GridLines(Qt::Vertical) == kThinLine) painter.fillRect(cell.right(), cell.top(), 1, cell.height(), color);
    if (GridLines(Qt::Horizontal) == kThinLine) painter.fillRect(cell.left(), cell.bottom(), cell.width(), 1, color);
}

void ListboxView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    columns_->Fit();
}

void ListboxView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        RowHeight(rowHeight_);
        columns_->Share();
    }
}

void ListboxView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    viewport()->update();
}

void ListboxView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
    // The release of the mouse may go to whoever has the keyboard now.
    endPress();
}

}  // namespace framework
