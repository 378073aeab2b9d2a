// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace framework {

class ListboxView;

/// Paints a list's cells: what the program paints behind them, then the selection and the text, then the grid. Shows
/// their tool tips.
class ListboxDelegate : public QStyledItemDelegate {
  public:
    explicit ListboxDelegate(ListboxView& view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  private:
    ListboxView& view_;
};

}  // namespace framework
