// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/Listbox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

#include "framework/ui/list/ListboxView.h"

namespace framework {

Listbox::Listbox() : RectControl(new ListboxView(*this)) {}

Listbox::~Listbox() {
    if (Native()) view().Forget();
}

ListboxView& Listbox::view() const {
    return *static_cast<ListboxView*>(Native());
}

// Rows

void Listbox::AddRow(const Array<String>& texts) {
    view().Model().Append(texts);
}

void Listbox::DeleteAllRows() {
    view().DeleteAllRows();
}

void Listbox::RemoveRow(int row) {
    view().RemoveRow(row);
}

void Listbox::Sort() {
    view().Sort();
}

int Listbox::ListCount() const {
    return view().Model().Rows().Count();
}

int Listbox::LastIndex() const {
    return view().Model().Rows().LastAppended();
}

String Listbox::Cell(int row, int column) const {
    return view().Model().Rows().Cell(row, column);
}

void Listbox::Cell(int row, int column, const String& text) {
    view().Model().Cell(row, column, text);
}

String Listbox::CellHelpTag(int row, int column) const {
    return view().Model().Rows().HelpTag(row, column);
}

void Listbox::CellHelpTag(int row, int column, const String& text) {
    view().Model().HelpTag(row, column, text);
}

Variant Listbox::CellTag(int row, int column) const {
    return view().Model().Rows().Tag(row, column);
}

void Listbox::CellTag(int row, int column, const Variant& value) {
    view().Model().Tag(row, column, value);
}

// Selection and place

int Listbox::ListIndex() const {
    return view().FirstSelected();
}

void Listbox::ListIndex(int row) {
    view().SelectOnly(row);
}

int Listbox::SelCount() const {
    return view().SelectedCount();
}

bool Listbox::Selected(int row) const {
    return view().IsSelected(row);
}

void Listbox::Selected(int row, bool selected) {
    view().Select(row, selected);
}

String Listbox::Text() const {
    const int row = ListIndex();
    return row < 0 ? String() : Cell(row, 0);
}

int Listbox::ScrollPosition() const {
    return view().TopRow();
}

void Listbox::ScrollPosition(int row) {
    view().TopRow(row);
}

int Listbox::SelectionType() const {
    return view().selectionMode() == QAbstractItemView::SingleSelection ? 0 : 1;
}

void Listbox::SelectionType(int type) {
    view().setSelectionMode(type == 0 ? QAbstractItemView::SingleSelection : QAbstractItemView::ExtendedSelection);
}

bool Listbox::RequiresSelection() const {
    return view().RequiresSelection();
}

void Listbox::RequiresSelection(bool required) {
    view().RequiresSelection(required);
}

// Columns and headings

int Listbox::ColumnCount() const {
    return view().Model().Rows().ColumnCount();
}

void Listbox::ColumnCount(int count) {
    view().Model().ColumnCount(count);
    view().Columns().CountChanged();
}

std::vector<QWidget*> Listbox::TabStops() const {
    return {view().horizontalHeader(), &view()};
}

bool Listbox::HasHeading() const {
    return !view().horizontalHeader()->isHidden();
}

void Listbox::HasHeading(bool has) {
    view().horizontalHeader()->setVisible(has);
}

String Listbox::Heading(int column) const {
    return view().Model().Heading(column);
}

void Listbox::Heading(int column, const String& text) {
    view().Model().Heading(column, text);
    view().Columns().Share();
}

void Listbox::ShareColumnWidths() {
    view().Columns().Share();
}

void Listbox::FileTagColumn(int column) {
    view().Model().FileTagColumn(column);
}

String Listbox::ColumnWidths() const {
    return view().Columns().Widths();
}

void Listbox::ColumnWidths(const String& widths) {
    view().Columns().Widths(widths);
}

int Listbox::HeadingIndex() const {
    return view().Columns().HeadingIndex();
}

void Listbox::HeadingIndex(int column) {
    view().Columns().HeadingIndex(column);
}

int Listbox::ColumnSortDirection(int column) const {
    return view().Columns().Direction(column);
}

void Listbox::ColumnSortDirection(int column, int direction) {
    view().Columns().Direction(column, direction);
}

bool Listbox::ColumnsResizable() const {
    return view().horizontalHeader()->sectionResizeMode(0) == QHeaderView::Interactive;
}

void Listbox::ColumnsResizable(bool resizable) {
    view().horizontalHeader()->setSectionResizeMode(resizable ? QHeaderView::Interactive : QHeaderView::Fixed);
}

// Appearance and behaviour

int Listbox::GridLinesHorizontal() const {
    return view().GridLines(Qt::Horizontal);
}

void Listbox::GridLinesHorizontal(int style) {
    view().GridLines(Qt::Horizontal, style);
}

int Listbox::GridLinesVertical() const {
    return view().GridLines(Qt::Vertical);
}

void Listbox::GridLinesVertical(int style) {
    view().GridLines(Qt::Vertical, style);
}

int Listbox::DefaultRowHeight() const {
    return view().RowHeight();
}

void Listbox::DefaultRowHeight(int height) {
    view().RowHeight(height);
}

bool Listbox::Border() const {
    return view().frameShape() != QFrame::NoFrame;
}

void Listbox::Border(bool border) {
    view().setFrameShape(border ? QFrame::StyledPanel : QFrame::NoFrame);
}

bool Listbox::UseFocusRing() const {
    return view().UseFocusRing();
}

void Listbox::UseFocusRing(bool use) {
    view().UseFocusRing(use);
}

bool Listbox::ScrollbarHorizontal() const {
    return view().HasScrollBar(Qt::Horizontal);
}

void Listbox::ScrollbarHorizontal(bool has) {
    view().HasScrollBar(Qt::Horizontal, has);
}

bool Listbox::ScrollBarVertical() const {
    return view().HasScrollBar(Qt::Vertical);
}

void Listbox::ScrollBarVertical(bool has) {
    view().HasScrollBar(Qt::Vertical, has);
}

bool Listbox::AutoHideScrollbars() const {
    return view().AutoHideScrollBars();
}

void Listbox::AutoHideScrollbars(bool hide) {
    view().AutoHideScrollBars(hide);
}

bool Listbox::EnableDrag() const {
    return view().DragsOut();
}

void Listbox::EnableDrag(bool enable) {
    view().DragsOut(enable);
}

bool Listbox::EnableDragReorder() const {
    return view().DragsRows();
}

void Listbox::EnableDragReorder(bool enable) {
    view().DragsRows(enable);
}

void Listbox::Refresh(bool) {
    view().viewport()->update();
}

// The Edit menu

bool Listbox::CanEdit(Command command) const {
    switch (command) {
        case Command::SelectAll:
            return SelectionType() == 1 && SelCount() < ListCount();
        case Command::Copy:
            return SelCount() > 0;
        default:
            return false;
    }
}

void Listbox::Edit(Command command) {
    if (!CanEdit(command)) return;
    if (command == Command::SelectAll) view().SelectEverything();
    if (command == Command::Copy) {
        QGuiApplication::clipboard()->setMimeData(view().Model().DataOf(view().SelectedRows()));
    }
}

}  // namespace framework
