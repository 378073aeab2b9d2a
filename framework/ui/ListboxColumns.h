#pragma once

#include <string_view>
#include <vector>

#include "framework/core/String.h"

class QHeaderView;
class QTableView;

namespace framework {

/// The widths of a list's columns and the state of their headings. The last column takes up the room that the others
/// leave; the first is as wide as it can be between two bounds as long as nobody gave widths; the others are as wide as
/// their headings, and somewhat wider where there is room.
class ListboxColumns {
  public:
    /// For a view that has its model already.
    explicit ListboxColumns(QTableView& view);

    /// Adapts to another number of columns.
    void CountChanged();
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
    int defaultWidth(int column) const;
    void resizedByPerson(int column, int width);
    void showIndicator();

    QTableView& view_;
    QHeaderView& header_;
    std::vector<int> wanted_;
    std::vector<int> directions_;
    int headingIndex_ = -1;
    bool fitting_ = false;
};

}  // namespace framework
