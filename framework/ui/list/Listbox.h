// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <concepts>
#include <vector>

#include "framework/core/objects/Array.h"
#include "framework/core/objects/Variant.h"
#include "framework/core/threads/Event.h"
#include "framework/ui/control/RectControl.h"
#include "framework/ui/drawing/Graphics.h"
#include "framework/ui/field/EditTarget.h"

namespace framework {

class ListboxView;
class MenuItem;

/// A list of rows of texts in columns. Rows and columns count from 0; a row or column that is not there raises
/// OutOfBoundsException. Made for 100,000 rows: rows are kept compactly, those added together come to the screen
/// together, and sorting lets others run.
class Listbox : public RectControl, public EditTarget {
  public:
    Listbox();
    ~Listbox() override;

    /// @name Events
    /// @{

    /// Paints what lies behind a cell's text; its result says that the text is not to be drawn any more. Asked for the
    /// stripes below the last row too, with row numbers that go on.
    Event<bool(framework::Graphics& g, int row, int column)> OnCellBackgroundPaint;
    /// Compares two rows for sorting by `column`: `result` becomes 1 when row1 belongs behind row2, else -1. False
    /// leaves it to the order of the cells' texts. The direction is not its concern.
    Event<bool(int row1, int row2, int column, int& result)> OnCompareRows;
    /// Other rows are selected than before, or the selected ones have moved to other places by a sort.
    Event<void()> OnChange;
    /// Fills the contextual menu; True shows it.
    Event<bool(Ref<MenuItem> base, int x, int y)> OnConstructContextualMenu;
    /// An entry of the contextual menu was chosen; its result says that this was all.
    Event<bool(Ref<MenuItem> item)> OnContextualMenuAction;
    /// A row was clicked twice.
    Event<void()> OnDoubleClick;
    /// A heading was clicked; the heading state is the new one already. True suppresses the sorting.
    Event<bool(int column)> OnSortColumn;
    /// A mouse button was pressed on the rows; True swallows the press.
    Event<bool(int x, int y)> OnMouseDown;

    /// @}
    /// @name Rows
    /// @{

    /// Adds a row at the end whose first cells take the texts; texts beyond the last column are dropped.
    void AddRow(const Array<String>& texts);
    template <std::convertible_to<String>... Texts>
    requires(sizeof...(Texts) > 0) void AddRow(const Texts&... texts) { AddRow(Array<String>{String(texts)...}); }
    /// The values in the tags of many rows live a few turns of the event loop longer.
    void DeleteAllRows();
    void RemoveRow(int row);
    /// Sorts the rows by the heading state: by the column HeadingIndex, ascending unless its direction is -1; nothing
    /// happens when there is no such column. Rows that compare as equal keep their order. A thread lets others run
    /// meanwhile. The new order is put in place in one step, and dropped if rows were removed or moved meanwhile.
    void Sort();

    int ListCount() const;
    /// The row last added, wherever it has moved since; -1 when there is none.
    int LastIndex() const;

    String Cell(int row, int column) const;
    void Cell(int row, int column, const String& text);
    /// A longer text for a cell, shown as its tool tip.
    String CellHelpTag(int row, int column) const;
    void CellHelpTag(int row, int column, const String& text);
    /// A hidden value of a cell, Nil at first.
    Variant CellTag(int row, int column) const;
    void CellTag(int row, int column, const Variant& value);
    /// The first cell of a row.
    String List(int row) const { return Cell(row, 0); }
    void List(int row, const String& text) { Cell(row, 0, text); }

    /// @}
    /// @name Selection and place
    /// @{

    /// The first selected row, -1 for none. Setting it selects that row alone.
    int ListIndex() const;
    void ListIndex(int row);
    int SelCount() const;
    bool Selected(int row) const;
    /// Selects a row beside the others (alone, where only one row may be), or not any more. As a person's selection
    /// does, it raises OnChange.
    void Selected(int row, bool selected);
    /// The first cell of the first selected row, empty when none is.
    String Text() const;

    /// The row at the top of what is visible. Below 0 is ignored, and beyond the last row that can stand there means
    /// that one. While the left button is down the list stays under the pointer; it scrolls at the release.
    int ScrollPosition() const;
    void ScrollPosition(int row);

    /// 0: one row at a time; 1: several.
    int SelectionType() const;
    void SelectionType(int type);
    /// Whether a person can leave the list with no row selected.
    bool RequiresSelection() const;
    void RequiresSelection(bool required);

    /// @}
    /// @name Columns and headings
    /// @{

    int ColumnCount() const;
    /// At least 1. Texts of columns that go are dropped.
    void ColumnCount(int count);
    bool HasHeading() const;
    void HasHeading(bool has);
    String Heading(int column) const;
    void Heading(int column, const String& text);

    /// The column whose tags tell the files of the rows, as FolderItem::GetSaveInfo gives them; -1, as at first, where
    /// rows are no files. Rows that are copied or dragged out bring their files along.
    void FileTagColumn(int column);
    /// Shares the room anew among the columns to which nobody gave a width, by what stands in the rows now: the first
    /// column, where names are, goes first, and one in which nothing stands keeps a narrow place. Without this call the
    /// room is shared when the list changes its width, and at no other time, so that columns do not jump as rows come.
    void ShareColumnWidths();
    /// The widths that were set or that a person gave, in pixels, joined by commas; empty for columns that share the
    /// room. When set, an entry may also be a share of the visible width ("20%"), or of what the others leave over
    /// ("*", "2*"); missing or senseless entries stand for a share. Where the list is too narrow for them, columns are
    /// on show narrower than this tells, so that each keeps a place. The last column takes up room that is left.
    String ColumnWidths() const;
    void ColumnWidths(const String& widths);

    /// The column by which rows are sorted, -1 for none; a column that is not there means none.
    int HeadingIndex() const;
    void HeadingIndex(int column);
    /// -1 descending, 0 not sorted yet, 1 ascending. A column that is not there has 0.
    int ColumnSortDirection(int column) const;
    void ColumnSortDirection(int column, int direction);
    /// Whether a person can change the widths.
    bool ColumnsResizable() const;
    void ColumnsResizable(bool resizable);

    /// @}
    /// @name Appearance and behaviour
    /// @{

    /// 0: none; 2: a thin line between cells.
    int GridLinesHorizontal() const;
    void GridLinesHorizontal(int style);
    int GridLinesVertical() const;
    void GridLinesVertical(int style);
    /// In pixels; -1 goes by the font.
    int DefaultRowHeight() const;
    void DefaultRowHeight(int height);
    bool Border() const;
    void Border(bool border);
    /// Whether a frame shows that the list has the keyboard.
    bool UseFocusRing() const;
    void UseFocusRing(bool use);
    bool ScrollbarHorizontal() const;
    void ScrollbarHorizontal(bool has);
    bool ScrollBarVertical() const;
    void ScrollBarVertical(bool has);
    /// Whether scroll bars show only when there is something to scroll.
    bool AutoHideScrollbars() const;
    void AutoHideScrollbars(bool hide);
    /// Whether selected rows can be dragged out, as text.
    bool EnableDrag() const;
    void EnableDrag(bool enable);
    /// Whether rows can be dragged to other places in the list.
    bool EnableDragReorder() const;
    void EnableDragReorder(bool enable);
    /// Kept for its owner: rows have no rows of their own here.
    bool Hierarchical() const { return hierarchical_; }
    void Hierarchical(bool hierarchical) { hierarchical_ = hierarchical; }

    void Refresh(bool eraseBackground = true);

    /// @}

    /// Selects all rows, or copies the selected ones as text.
    bool CanEdit(Command command) const override;
    void Edit(Command command) override;

    /// The headings, and the rows.
    std::vector<QWidget*> TabStops() const override;

  private:
    ListboxView& view() const;

    bool hierarchical_ = false;
};

}  // namespace framework
