// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxView.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/core/threads/Waiting.h"
#include "framework/ui/list/Listbox.h"
#include "framework/ui/list/ListboxAccessible.h"
#include "framework/ui/list/ListboxChangeScope.h"
#include "framework/ui/list/ListboxDelegate.h"
#include "framework/ui/list/ListboxHeader.h"
#include "framework/ui/list/TextOrder.h"

namespace framework {
namespace {

/// How long a sort may hold up the window at once: half the time of a screen's frame.
constexpr qint64 kSortSlice = 8;
/// A sort that is done within this time is not to be seen in steps.
constexpr qint64 kFirstSortSlice = 25;

using Flag = QItemSelectionModel::SelectionFlag;

}  // namespace

ListboxView::ListboxView(Listbox& list) {
    native::AnnounceHeadings();
    setHorizontalHeader(new ListboxHeader(this));
    setModel(&model_);
    // Only now: the list is still being made, and taking a model over counts as a change of selection.
    list_ = &list;
    setItemDelegate(new ListboxDelegate(*this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    RowHeight(-1);
    updateScrollBars();
    columns_ = std::make_unique<ListboxColumns>(*this, model_.Rows());
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) { headingClicked(column); });
    // The second of two quick clicks is a click like any other.
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int column) { headingClicked(column); });
}

ListboxView::~ListboxView() {
    // Its members, the model among them, go before what the base class has of them.
    setModel(nullptr);
}

void ListboxView::RemoveRow(int row) {
    const ChangeScope scope(*this);
    model_.Remove(row);
}

void ListboxView::DeleteAllRows() {
    const ChangeScope scope(*this);
    model_.Clear();
}

void ListboxView::MoveRows(const std::vector<int>& rows, int target) {
    std::vector<int> order;
    const auto isMoved = [&rows](int row) { return std::binary_search(rows.begin(), rows.end(), row); };
    const int count = model_.Rows().Count();
    for (int row = 0; row <= count; ++row) {
        if (row == target) order.insert(order.end(), rows.begin(), rows.end());
        if (row < count && !isMoved(row)) order.push_back(row);
    }
    place(order);
}

// Sorting

std::unique_ptr<ListboxSort> ListboxView::makeSort() {
    const int column = columns_->HeadingIndex();
    const bool descending = columns_->Direction(column) < 0;
    const auto texts = std::make_shared<TextOrder>(model_.Rows().Count());
    const auto isBehind = [this, column, texts](int one, int other) {
        int result = 0;
        if (list_ && list_->OnCompareRows.Raise(one, other, column, result)) return result == 1;
        return texts->IsBehind(one, other, [this, column](int row) { return model_.Rows().Cell(row, column); });
    };
    return std::make_unique<ListboxSort>(model_.Rows().Count(), [descending, isBehind](int one, int other) {
        return descending ? isBehind(other, one) : isBehind(one, other);
    });
}

void ListboxView::Sort() {
    const int column = columns_->HeadingIndex();
    if (column < 0) return;
    if (columns_->Direction(column) == 0) columns_->Direction(column, 1);
    sort_.reset();
    const auto sort = makeSort();
    const std::uint64_t revision = model_.Rows().Revision();
    while (sort->Step()) {
        LoopYield();
        // A person's click on a heading meanwhile is the younger wish.
        if (sort_ || model_.Rows().Revision() != revision) return;
    }
    place(sort->Order());
}

void ListboxView::SortInBackground() {
    if (columns_->HeadingIndex() < 0) return;
    sort_ = makeSort();
    sortedRevision_ = model_.Rows().Revision();
    sortFor(kFirstSortSlice);
    if (sort_) sortTimer_.start(0, this);
}

void ListboxView::sortFor(qint64 milliseconds) {
    QElapsedTimer passed;
    passed.start();
    bool goesOn = true;
    const std::shared_ptr<ListboxSort> sort = sort_;
    do {
        goesOn = sort->Step();
        if (sort_ != sort || model_.Rows().Revision() != sortedRevision_) return;
    } while (goesOn && !passed.hasExpired(milliseconds));
    if (goesOn) return;
    sort_ = nullptr;
    place(sort->Order());
}

void ListboxView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != sortTimer_.timerId()) {
        QTableView::timerEvent(event);
        return;
    }
    if (sort_ && model_.Rows().Revision() != sortedRevision_) {
        sort_ = makeSort();
        sortedRevision_ = model_.Rows().Revision();
    }
    if (sort_) sortFor(kSortSlice);
    if (!sort_) sortTimer_.stop();
}

/// Puts the rows in `order`, and lets the selection follow its rows.
void ListboxView::place(const std::vector<int>& order) {
    model_.Announce();
    if (std::is_sorted(order.begin(), order.end())) return;
    const ChangeScope scope(*this);
    const std::vector<int> before = SelectedRows();
    std::vector<int> newPlace(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) newPlace[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
    std::vector<int> after;
    for (const int row : before) {
        const auto index = static_cast<std::size_t>(row);
        after.push_back(index < newPlace.size() ? newPlace[index] : row);
    }
    std::sort(after.begin(), after.end());

    // Not left to the selection model, which would keep track of each cell by itself: with many rows that takes long.
    quiet_ = true;
    selectionModel()->clearSelection();
    model_.Reorder(order);
    selectRows(after);
    quiet_ = false;
    if (after != before) raiseChange();
}

// Selection

std::vector<int> ListboxView::SelectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (range.left() > 0) continue;
        for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

int ListboxView::SelectedCount() const {
    int count = 0;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (range.left() == 0) count += range.height();
    }
    return count;
}

int ListboxView::FirstSelected() const {
    int first = -1;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (first < 0 || range.top() < first) first = range.top();
    }
    return first;
}

bool ListboxView::IsSelected(int row) const {
    if (row < 0 || row >= model_.Rows().Count()) throw OutOfBoundsException();
    return row < model_.rowCount() && selectionModel()->isSelected(model_.index(row, 0));
}

void ListboxView::Select(int row, bool selected) {
    if (row < 0 || row >= model_.Rows().Count()) throw OutOfBoundsException();
    const ChangeScope scope(*this);
    model_.Announce();
    const Flag command = !selected                            ? Flag::Deselect
                         : selectionMode() == SingleSelection ? Flag::ClearAndSelect
                                                              : Flag::Select;
    const QModelIndex index = model_.index(row, 0);
    // The arrow keys go on from there.
    if (selected && !currentIndex().isValid()) selectionModel()->setCurrentIndex(index, Flag::NoUpdate);
    selectionModel()->select(index, command | Flag::Rows);
}

void ListboxView::SelectOnly(int row) {
    if (row < -1 || row >= model_.Rows().Count()) throw OutOfBoundsException();
    const ChangeScope scope(*this);
    model_.Announce();
    if (row < 0) {
        selectionModel()->clearSelection();
    } else {
        selectionModel()->setCurrentIndex(model_.index(row, 0), Flag::ClearAndSelect | Flag::Rows);
    }
}

void ListboxView::SelectEverything() {
    const ChangeScope scope(*this);
    model_.Announce();
    selectAll();
}

/// Selects the rows, which are in ascending order, besides those that are selected.
void ListboxView::selectRows(const std::vector<int>& rows) {
    QItemSelection selection;
    for (std::size_t i = 0; i < rows.size();) {
        std::size_t end = i + 1;
        while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
        const QModelIndex first = model_.index(rows[i], 0);
        selection.append(QItemSelectionRange(first, model_.index(rows[end - 1], model_.columnCount() - 1)));
        i = end;
    }
    selectionModel()->select(selection, Flag::Select);
}

void ListboxView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    // Both are empty where selected rows have merely moved because rows above them went.
    if (!quiet_ && !(selected.isEmpty() && deselected.isEmpty())) raiseChange();
}

/// Raises the list's event, at the end of what is going on: a click or key may change the selection in several steps,
/// and the handler may do with the list what it likes.
void ListboxView::raiseChange() {
    if (changeScopes_ > 0) {
        changed_ = true;
    } else if (list_) {
        const Ref<Listbox> alive(list_);
        alive->OnChange.Raise();
    }
}

QItemSelectionModel::SelectionFlags ListboxView::selectionCommand(const QModelIndex& index, const QEvent* event) const {
    const auto command = QTableView::selectionCommand(index, event);
    if (!requiresSelection_ || SelectedCount() == 0) return command;
    const bool clears = command.testFlag(Flag::Clear) && !(command.testFlag(Flag::Select) && index.isValid());
    const bool togglesOff =
        command.testFlag(Flag::Toggle) && SelectedCount() == 1 && index.isValid() && index.row() == FirstSelected();
    return clears || togglesOff ? QItemSelectionModel::SelectionFlags(Flag::NoUpdate) : command;
}

// Place and looks

int ListboxView::TopRow() const {
    return scrollAtRelease_ ? *scrollAtRelease_ : verticalScrollBar()->value() / verticalHeader()->defaultSectionSize();
}

void ListboxView::TopRow(int row) {
    if (row < 0) return;
    if (leftDown_) {
        scrollAtRelease_ = row;
        return;
    }
    model_.Announce();
    // Brings the scroll bar's range up to date.
    updateGeometries();
    verticalScrollBar()->setValue(row * verticalHeader()->defaultSectionSize());
}

void ListboxView::RowHeight(int height) {
    constexpr int kSpace = 5;
    rowHeight_ = height > 0 ? height : -1;
    verticalHeader()->setDefaultSectionSize(height > 0 ? height : fontMetrics().height() + kSpace);
}

void ListboxView::UseFocusRing(bool use) {
    useFocusRing_ = use;
    viewport()->update();
}

void ListboxView::GridLines(Qt::Orientation orientation, int style) {
    gridLines_[orientation == Qt::Vertical] = style;
    viewport()->update();
}

void ListboxView::HasScrollBar(Qt::Orientation orientation, bool has) {
    hasScrollBar_[orientation == Qt::Vertical] = has;
    updateScrollBars();
}

void ListboxView::AutoHideScrollBars(bool hide) {
    autoHideScrollBars_ = hide;
    updateScrollBars();
}

void ListboxView::updateScrollBars() {
    const auto policy = [this](Qt::Orientation orientation) {
        if (!HasScrollBar(orientation)) return Qt::ScrollBarAlwaysOff;
        return autoHideScrollBars_ ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOn;
    };
    setHorizontalScrollBarPolicy(policy(Qt::Horizontal));
    setVerticalScrollBarPolicy(policy(Qt::Vertical));
}

void ListboxView::DragsOut(bool drags) {
    dragsOut_ = drags;
    updateDragging();
}

void ListboxView::DragsRows(bool drags) {
    dragsRows_ = drags;
    updateDragging();
}

void ListboxView::updateDragging() {
    setDragDropMode(dragsRows_ ? (dragsOut_ ? DragDrop : InternalMove) : dragsOut_ ? DragOnly : NoDragDrop);
}

}  // namespace framework
