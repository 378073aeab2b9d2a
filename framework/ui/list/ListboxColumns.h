// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "framework/core/text/String.h"

class QHeaderView;
class QTableView;

namespace framework {

/// The widths of a list's columns and the state of their headings. As long as nobody gave widths the columns share the
/// room: each is wide enough for its usual text, and for its heading where that is possible; those of no usual text get
/// what is left, the first of them most. The last column takes up the room that the others leave.
class ListboxColumns {
  public:
    /// For a view that has its model already.
    explicit ListboxColumns(QTableView& view);

    /// Adapts to another number of columns.
    void CountChanged();
    /// A text as it usually stands in `column`, which is there; empty for one of texts that may be long.
    void UsualText(int column, const QString& text);
    /// Gives the columns their widths; to be called when the room for them has changed.
    void Fit();

    /// What was asked for, not what the present room makes of it: it is to be kept for a room of another size.
    String Widths() const;
    void Widths(const String& widths);

    int HeadingIndex() const { return headingIndex_; }
    void HeadingIndex(int column);
    int Direction(int column) const;
    void Direction(int column, int direction);
    /// Makes `column`, which is there, the one to sort by: in its direction of old, or the other way round when it is
    /// the one already.
    void Choose(int column);

  private:
    static constexpr int kDefault = -1;

    int count() const { return static_cast<int>(wanted_.size()); }
    bool has(int column) const { return column >= 0 && column < count(); }
    int room() const;
    int headingWidth(int column) const;
    int contentWidth(int column) const;
    std::vector<int> defaultWidths() const;
    void resizedByPerson(int column, int width);
    void showIndicator();

    QTableView& view_;
    QHeaderView& header_;
    std::vector<int> wanted_;
    std::vector<int> directions_;
    std::vector<QString> usual_;
    int headingIndex_ = -1;
    bool fitting_ = false;
};

}  // namespace framework
