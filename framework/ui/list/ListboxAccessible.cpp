// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxAccessible.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleTableInterface>
#include <QPointer>
#include <QWindow>
#include <map>

#include "framework/ui/list/ListboxHeader.h"
#include "framework/ui/list/ListboxView.h"

namespace framework::native {
namespace {

ListboxHeader& headerOf(const ListboxView& view) {
    return *static_cast<ListboxHeader*>(view.horizontalHeader());
}

/// A heading of a list: it can be focused, and pressing it sorts.
class Heading : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    Heading(ListboxView& view, int column) : view_(&view), column_(column) {}

    bool isValid() const override { return view_ && column_ < headerOf(*view_).count(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QWindow* window() const override { return isValid() ? view_->window()->windowHandle() : nullptr; }
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        if (!isValid()) return {};
        const QHeaderView& header = headerOf(*view_);
        if (kind == QAccessible::Name) return view_->model()->headerData(column_, Qt::Horizontal).toString().trimmed();
        if (kind != QAccessible::Description || header.sortIndicatorSection() != column_) return {};
        return header.sortIndicatorOrder() == Qt::AscendingOrder ? QStringLiteral("Sorted, ascending")
                                                                 : QStringLiteral("Sorted, descending");
    }

    QRect rect() const override {
        if (!isValid() || !headerOf(*view_).isVisible()) return {};
        const ListboxHeader& header = headerOf(*view_);
        const QPoint corner(header.sectionViewportPosition(column_), 0);
        return {header.viewport()->mapToGlobal(corner), QSize(header.sectionSize(column_), header.height())};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid) return state;
        const ListboxHeader& header = headerOf(*view_);
        state.focusable = true;
        state.focused = header.hasFocus() && header.Current() == column_;
        state.disabled = !header.isEnabled();
        state.invisible = !header.isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& action) override {
        if (!isValid()) return;
        ListboxHeader& header = headerOf(*view_);
        if (action == pressAction()) header.Press(column_);
        if (action == setFocusAction()) {
            header.Current(column_);
            header.setFocus(Qt::OtherFocusReason);
        }
    }

  private:
    QPointer<ListboxView> view_;
    int column_;
};

/// The toolkit's table with other headings.
class Table : public QAccessibleInterface, public QAccessibleTableInterface {
  public:
    Table(ListboxView& view, QAccessibleInterface& toolkits)
        : view_(view), object_(&view), own_(QAccessible::uniqueId(&toolkits)) {}

    ~Table() override {
        for (const auto& [column, id] : headings_) QAccessible::deleteAccessibleInterface(id);
    }

    // The toolkit takes both down at its end, in no order, and asks these of the second.
    bool isValid() const override {
        const QAccessibleInterface* const toolkits = QAccessible::accessibleInterface(own_);
        return toolkits && toolkits->isValid();
    }
    QObject* object() const override { return object_; }
    QWindow* window() const override { return own().window(); }
    QAccessibleInterface* parent() const override { return own().parent(); }
    QAccessibleInterface* focusChild() const override {
        const ListboxHeader& header = headerOf(view_);
        return header.hasFocus() ? heading(header.Current()) : own().focusChild();
    }
    QAccessibleInterface* child(int index) const override { return replaced(own().child(index), index - 1); }
    QAccessibleInterface* childAt(int x, int y) const override {
        const ListboxHeader& header = headerOf(view_);
        const QPoint place = header.viewport()->mapFromGlobal(QPoint(x, y));
        const bool isHeading = header.isVisible() && header.viewport()->rect().contains(place);
        return isHeading ? heading(header.logicalIndexAt(place)) : own().childAt(x, y);
    }
    int childCount() const override { return own().childCount(); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (const auto& [column, id] : headings_) {
            if (QAccessible::accessibleInterface(id) == child) return column + 1;
        }
        return own().indexOfChild(child);
    }
    QString text(QAccessible::Text kind) const override { return own().text(kind); }
    void setText(QAccessible::Text kind, const QString& text) override { own().setText(kind, text); }
    QRect rect() const override { return own().rect(); }
    QAccessible::Role role() const override { return own().role(); }
    QAccessible::State state() const override { return own().state(); }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : own().interface_cast(type);
    }

    QAccessibleInterface* caption() const override { return table().caption(); }
    QAccessibleInterface* summary() const override { return table().summary(); }
    QAccessibleInterface* cellAt(int row, int column) const override { return table().cellAt(row, column); }
    int selectedCellCount() const override { return table().selectedCellCount(); }
    QList<QAccessibleInterface*> selectedCells() const override { return table().selectedCells(); }
    QString columnDescription(int column) const override { return table().columnDescription(column); }
    QString rowDescription(int row) const override { return table().rowDescription(row); }
    int selectedColumnCount() const override { return table().selectedColumnCount(); }
    int selectedRowCount() const override { return table().selectedRowCount(); }
    int columnCount() const override { return table().columnCount(); }
    int rowCount() const override { return table().rowCount(); }
    QList<int> selectedColumns() const override { return table().selectedColumns(); }
    QList<int> selectedRows() const override { return table().selectedRows(); }
    bool isColumnSelected(int column) const override { return table().isColumnSelected(column); }
    bool isRowSelected(int row) const override { return table().isRowSelected(row); }
    bool selectRow(int row) override { return table().selectRow(row); }
    bool selectColumn(int column) override { return table().selectColumn(column); }
    bool unselectRow(int row) override { return table().unselectRow(row); }
    bool unselectColumn(int column) override { return table().unselectColumn(column); }
    void modelChange(QAccessibleTableModelChangeEvent* event) override { table().modelChange(event); }

  private:
    QAccessibleInterface& own() const { return *QAccessible::accessibleInterface(own_); }
    QAccessibleTableInterface& table() const { return *own().tableInterface(); }

    QAccessibleInterface* replaced(QAccessibleInterface* child, int column) const {
        return child && child->role() == QAccessible::ColumnHeader ? heading(column) : child;
    }

    QAccessibleInterface* heading(int column) const {
        if (column < 0 || column >= headerOf(view_).count()) return nullptr;
        const auto known = headings_.find(column);
        if (known != headings_.end()) return QAccessible::accessibleInterface(known->second);
        auto* const made = new Heading(view_, column);
        headings_[column] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

    ListboxView& view_;
    QPointer<QObject> object_;
    /// The toolkit's, which is known to it by the same object and goes with that.
    QAccessible::Id own_;
    mutable std::map<int, QAccessible::Id> headings_;
};

QAccessibleInterface* tableOf(const QString&, QObject* object) {
    static bool asksToolkit = false;
    auto* const view = dynamic_cast<ListboxView*>(object);
    if (!view || asksToolkit) return nullptr;
    asksToolkit = true;
    QAccessibleInterface* const toolkits = QAccessible::queryAccessibleInterface(view);
    asksToolkit = false;
    return toolkits && toolkits->tableInterface() ? new Table(*view, *toolkits) : nullptr;
}

}  // namespace

void AnnounceHeadings() {
    QAccessible::installFactory(tableOf);  // a second installation of the same function counts for nothing
}

}  // namespace framework::native
