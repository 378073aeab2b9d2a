// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>
#include <vector>

#include "framework/core/text/String.h"

class QHeaderView;
class QTableView;

namespace framework {

class ListboxRows;

/// The widths of a list's columns and the state of their headings. The columns to which nobody gave a width share the
/// room by what stands in them; see Share. No column is ever pushed out of the list: each keeps a narrow place at
/// least. The last column takes up the room that the others leave.
class ListboxColumns {
  public:
    /// For a view that has its model already, and the rows of that.
    ListboxColumns(QTableView& view, const ListboxRows& rows);

    /// Adapts to another number of columns.
    void CountChanged();
    /// Shares the room by the rows that are there now. Rows that come later change no width, so that nothing moves
    /// under a person's eyes, until this is called again or the room changes.
    void Share();
    /// To be called when the room for the columns may have changed.
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

    /// What a column would like to have, in pixels.
    struct Wishes {
        /// For the widest of its texts; 0 where nothing stands in it.
        int texts = 0;
        /// In the first column, for the beginnings of its texts by which a person tells one from the other.
        int beginningOfName = 0;
        /// All its texts are short ones, such as numbers, of which a part says nothing.
        bool isShort = true;
    };

    int count() const { return static_cast<int>(wanted_.size()); }
    bool has(int column) const { return column >= 0 && column < count(); }
    int visibleWidth() const;
    int room() const;
    int letters(int number) const;
    int least(int column) const;
    int headingWidth(int column) const;
    void measure();
    void shareRoom();
    void show();
    void draggedByPerson(int column, int width);
    void fitToTexts(int column);
    void showIndicator();

    QTableView& view_;
    QHeaderView& header_;
    const ListboxRows& rows_;
    std::vector<int> wanted_;
    std::vector<int> directions_;
    /// By the rows that were there at the last measuring.
    std::vector<Wishes> wishes_;
    int measuredRows_ = 0;
    /// As shared last, and for which room.
    std::vector<int> widths_;
    int sharedRoom_ = -1;
    int headingIndex_ = -1;
    bool showing_ = false;
};

}  // namespace framework
