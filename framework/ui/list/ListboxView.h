// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QTableView>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "framework/ui/list/ListboxColumns.h"
#include "framework/ui/list/ListboxModel.h"
#include "framework/ui/list/ListboxSort.h"

namespace framework {

class Graphics;
class Listbox;

/// The widget of a list: the toolkit's table view over the list's own model. Brings a person's doings to the list's
/// events. It may outlive its list in the window, and then raises none.
class ListboxView : public QTableView {
  public:
    explicit ListboxView(Listbox& list);
    ~ListboxView() override;

    void Forget() { list_ = nullptr; }
    ListboxModel& Model() { return model_; }
    ListboxColumns& Columns() { return *columns_; }

    /// @name Rows and selection
    /// @{
    void RemoveRow(int row);
    void DeleteAllRows();
    void Sort();
    /// Starts sorting, and goes on with it at later turns of the event loop if it takes long, while the window lives.
    void SortInBackground();

    /// Moves the rows before the row that is now at `target`.
    void MoveRows(const std::vector<int>& rows, int target);

    std::vector<int> SelectedRows() const;
    int SelectedCount() const;
    int FirstSelected() const;
    bool IsSelected(int row) const;
    void Select(int row, bool selected);
    void SelectOnly(int row);
    void SelectEverything();

    int TopRow() const;
    void TopRow(int row);
    /// @}
    /// @name Looks and behaviour
    /// @{
    int RowHeight() const { return rowHeight_; }
    /// -1 goes by the font.
    void RowHeight(int height);
    bool RequiresSelection() const { return requiresSelection_; }
    void RequiresSelection(bool required) { requiresSelection_ = required; }
    bool UseFocusRing() const { return useFocusRing_; }
    void UseFocusRing(bool use);
    int GridLines(Qt::Orientation orientation) const { return gridLines_[orientation == Qt::Vertical]; }
    void GridLines(Qt::Orientation orientation, int style);
    bool HasScrollBar(Qt::Orientation orientation) const { return hasScrollBar_[orientation == Qt::Vertical]; }
    void HasScrollBar(Qt::Orientation orientation, bool has);
    bool AutoHideScrollBars() const { return autoHideScrollBars_; }
    void AutoHideScrollBars(bool hide);
    bool DragsOut() const { return dragsOut_; }
    void DragsOut(bool drags);
    bool DragsRows() const { return dragsRows_; }
    void DragsRows(bool drags);
    /// @}

    /// Has the program paint what is behind a cell at `cell`; see Listbox::OnCellBackgroundPaint. `covered` becomes the
    /// colour of the background if it is one.
    bool PaintBackground(QPainter& painter, const QRect& cell, int row, int column, std::optional<Color>& covered);
    void PaintGridLines(QPainter& painter, const QRect& cell);

    void keyboardSearch(const QString& text) override;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

  private:
    class ChangeScope;

    void raiseChange();
    bool raiseMouseDown(const QPoint& place);
    void headingClicked(int column);
    void openContextualMenu(const QPoint& place);
    void openContextualMenuAtRow();
    void endPress();
    std::unique_ptr<ListboxSort> makeSort();
    void sortFor(qint64 milliseconds);
    void place(const std::vector<int>& order);
    void selectRows(const std::vector<int>& rows);
    void paintBelowRows(QPainter& painter);
    void updateScrollBars();
    void updateDragging();
    int findByStart(const QString& start, int from) const;

    Listbox* list_ = nullptr;
    ListboxModel model_;
    std::unique_ptr<ListboxColumns> columns_;

    /// @name Changes of the selection while something else is going on
    /// @{
    int changeScopes_ = 0;
    bool changed_ = false;
    bool quiet_ = false;
    /// @}
    /// @name The press of the mouse in progress
    /// @{
    bool leftDown_ = false;
    bool swallowed_ = false;
    bool pressedRow_ = false;
    std::optional<int> scrollAtRelease_;
    /// @}
    /// @name Sorting in the background
    /// @{
    /// Shared with whoever is at a step of it, in which a handler may begin another one.
    std::shared_ptr<ListboxSort> sort_;
    std::uint64_t sortedRevision_ = 0;
    QBasicTimer sortTimer_;
    /// @}

    QString searched_;
    QElapsedTimer sinceSearch_;
    int rowHeight_ = -1;
    int gridLines_[2] = {};
    bool hasScrollBar_[2] = {false, true};
    bool autoHideScrollBars_ = true;
    bool requiresSelection_ = false;
    bool useFocusRing_ = true;
    bool dragsOut_ = false;
    bool dragsRows_ = false;
};

}  // namespace framework
