// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QHeaderView>

namespace framework {

/// The headings of a list, for the keyboard too: Tab comes to them before the rows, the arrows go from one to the next,
/// Space and Return press one as a click does.
class ListboxHeader : public QHeaderView {
  public:
    explicit ListboxHeader(QWidget* parent);

    /// The heading that the keyboard is at; -1 where there are none.
    int Current() const;
    void Current(int column);
    /// Emits sectionClicked.
    void Press(int column);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintSection(QPainter* painter, const QRect& place, int column) const override;

  private:
    void announce();

    int current_ = 0;
};

}  // namespace framework
