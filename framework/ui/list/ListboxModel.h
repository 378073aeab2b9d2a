// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QStringList>
#include <vector>

#include "framework/core/files/FolderItem.h"
#include "framework/ui/list/ListboxRows.h"

namespace framework {

/// A list's rows as the toolkit's view sees them. Rows that were added and cells that were changed are announced to
/// the view together, at the next turn of the event loop, or in a long list a tenth of a second after those before:
/// until then the view knows the first rows only.
class ListboxModel : public QAbstractTableModel {
  public:
    const ListboxRows& Rows() const { return rows_; }

    void Append(const Array<String>& texts);
    void Remove(int row);
    void Clear();
    void Reorder(const std::vector<int>& order);
    void ColumnCount(int count);
    void Cell(int row, int column, const String& text);
    void HelpTag(int row, int column, const String& text) { rows_.HelpTag(row, column, text); }
    void Tag(int row, int column, const Variant& value) { rows_.Tag(row, column, value); }

    String Heading(int column) const;
    void Heading(int column, const String& text);

    /// Tells the view now what has not been told yet.
    void Announce();

    /// The column whose tags tell the files of the rows, in the form of FolderItem::GetSaveInfo; -1 where rows are no
    /// files.
    void FileTagColumn(int column) { fileTagColumn_ = column; }
    /// The rows for other programs: lines of text with tabs between the cells, the headings first and the path last, as
    /// a spreadsheet wants them, in quotes what holds a line end or a tab; and the files, as file managers want them.
    /// The toolkit takes it over.
    QMimeData* DataOf(const std::vector<int>& rows) const;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : announced_; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : rows_.ColumnCount();
    }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    void announceLater();
    Ref<FolderItem> fileOf(int row) const;
    QString asText(const std::vector<int>& rows) const;

    ListboxRows rows_;
    std::vector<String> headings_ = std::vector<String>(1);
    int fileTagColumn_ = -1;
    int announced_ = 0;
    /// The rows whose cells have changed, none while the first is behind the last.
    int firstChanged_ = 0;
    int lastChanged_ = -1;
    QBasicTimer announcement_;
    QElapsedTimer sinceAnnouncement_;
    /// Runs while the room of cleared rows is given back.
    QBasicTimer release_;
};

/// A cell's text as it is shown: on one line, and no longer than anybody could read at a glance.
QString ShownText(const String& text);

}  // namespace framework
