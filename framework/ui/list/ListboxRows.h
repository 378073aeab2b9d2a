// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "framework/core/objects/Array.h"
#include "framework/core/objects/Variant.h"
#include "framework/core/text/String.h"

namespace framework {

/// Lets equal texts share their bytes: remembers some of those it saw last, in fixed room and at a fixed cost.
class SharedTexts {
  public:
    /// `text`, or the same bytes from earlier.
    const String& Share(const String& text);
    void Forget();

  private:
    static constexpr std::size_t kPlaces = 1024;

    /// One text for each place, found by its hash; a new one drives the old one out.
    std::array<String, kPlaces> places_;
};

/// The rows of a list, compactly: one block of texts for each row, tags only where there are any. Knows nothing of the
/// screen. A row or column that is not there raises OutOfBoundsException.
class ListboxRows {
  public:
    int Count() const { return static_cast<int>(rows_.size()); }
    int ColumnCount() const { return columns_; }
    /// At least 1. Texts and tags of columns that go are dropped.
    void ColumnCount(int count);

    /// Adds a row whose first cells take the texts.
    void Append(const Array<String>& texts);
    void Remove(int row);
    /// The rows go at once, but the room of many only by ReleaseSome: to free it all takes long enough to be felt.
    void Clear();
    /// Gives back the room of some of the rows that were cleared. False when none are left.
    bool ReleaseSome();
    /// Puts the row order[i] at place i; `order` is a permutation of the first rows, those behind them stay.
    void Reorder(const std::vector<int>& order);

    /// The row appended last, wherever it is now; -1 when there is none or it was removed.
    int LastAppended() const { return lastAppended_; }
    /// Counts each time when rows that are there go or change places.
    std::uint64_t Revision() const { return revision_; }

    const String& Cell(int row, int column) const { return at(row).texts[checkedColumn(column)]; }
    void Cell(int row, int column, const String& text);
    const String& HelpTag(int row, int column) const { return at(row).texts[helpTagPlace(column)]; }
    void HelpTag(int row, int column, const String& text);
    Variant Tag(int row, int column) const;
    void Tag(int row, int column, const Variant& value);

  private:
    struct TagEntry {
        int column;
        Variant value;
    };
    struct Row {
        /// The cells, then the help tags.
        std::unique_ptr<String[]> texts;
        std::vector<TagEntry> tags;
    };

    const Row& at(int row) const;
    Row& at(int row) { return const_cast<Row&>(std::as_const(*this).at(row)); }
    std::size_t checkedColumn(int column) const;
    std::size_t helpTagPlace(int column) const { return checkedColumn(column) + static_cast<std::size_t>(columns_); }

    std::vector<Row> rows_;
    std::vector<Row> cleared_;
    SharedTexts shared_;
    int columns_ = 1;
    int lastAppended_ = -1;
    std::uint64_t revision_ = 0;
};

}  // namespace framework
