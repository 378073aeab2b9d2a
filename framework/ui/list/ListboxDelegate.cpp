// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxDelegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <optional>

#include "framework/ui/drawing/Contrast.h"
#include "framework/ui/drawing/CutText.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/list/ListboxView.h"

namespace framework {
namespace {

/// The longest tool tip; more would not fit on the screen.
constexpr qsizetype kLongestTip = 2000;

}  // namespace

ListboxDelegate::ListboxDelegate(ListboxView& view) : QStyledItemDelegate(&view), view_(view) {}

void ListboxDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    std::optional<Color> covered;
    const bool done = view_.PaintBackground(*painter, option.rect, index.row(), index.column(), covered);
    if (!done) {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        // A person moves in whole rows; a frame around one of the cells would say nothing.
        cell.state.setFlag(QStyle::State_HasFocus, false);
        if (covered) cell.palette.setColor(QPalette::Text, internal::IsDark(*covered) ? Qt::white : Qt::black);
        view_.style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, &view_);
    }
    view_.PaintGridLines(*painter, option.rect);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (!selected && view_.hasFocus() && view_.currentIndex().row() == index.row()) {
        painter->setPen(option.palette.color(QPalette::Highlight));
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    }
}

bool ListboxDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const ListboxRows& rows = view_.Model().Rows();
    String tip = rows.HelpTag(index.row(), index.column());
    if (tip.IsEmpty() && sizeHint(option, index).width() > option.rect.width()) {
        tip = rows.Cell(index.row(), index.column());
    }
    QToolTip::showText(event->globalPos(), native::ToToolTip(native::ToQt(tip, kLongestTip)), view_.viewport(),
                       option.rect);
    return true;
}

}  // namespace framework
