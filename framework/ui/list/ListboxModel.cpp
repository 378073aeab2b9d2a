// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxModel.h"

#include <QMimeData>
#include <QTimerEvent>
#include <algorithm>
#include <memory>
#include <utility>

#include "framework/core/files/FolderItem.h"
#include "framework/core/objects/Exceptions.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/ui/drawing/CutText.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Without the characters that would end a line or a cell.
QString onOneLine(QString line) {
    for (QChar& character : line) {
        const char16_t code = character.unicode();
        if (code < u' ' || code == u'\x7F' || code == QChar::LineSeparator || code == QChar::ParagraphSeparator) {
            character = QLatin1Char(' ');
        }
    }
    return line;
}

/// A text as spreadsheets take it in a line of cells: in quotes, and the quotes in it twice, where it would be misread.
QString asField(const String& text) {
    QString field = native::ToQt(text);
    constexpr QChar kQuote(u'"');
    const bool endsCell =
        std::any_of(field.cbegin(), field.cend(), [](QChar c) { return c == u'\t' || c == u'\n' || c == u'\r'; });
    if (!endsCell && !field.startsWith(kQuote)) return field;
    return kQuote + field.replace(kQuote, QLatin1String("\"\"")) + kQuote;
}

}  // namespace

QString ShownText(const String& text) {
    // A caption can be a book; laying it out for each paint would hold up the window.
    constexpr qsizetype kLongest = 2000;
    return onOneLine(native::ToQt(text, kLongest));
}

void ListboxModel::Append(const Array<String>& texts) {
    rows_.Append(texts);
    announceLater();
}

void ListboxModel::Remove(int row) {
    Announce();
    if (row < 0 || row >= announced_) throw OutOfBoundsException();
    const internal::NoYield noYield;
    beginRemoveRows({}, row, row);
    rows_.Remove(row);
    --announced_;
    endRemoveRows();
}

void ListboxModel::Clear() {
    const internal::NoYield noYield;
    if (announced_ > 0) beginRemoveRows({}, 0, announced_ - 1);
    rows_.Clear();
    if (rows_.ReleaseSome()) release_.start(0, this);
    lastChanged_ = -1;
    if (std::exchange(announced_, 0) > 0) endRemoveRows();
}

void ListboxModel::Reorder(const std::vector<int>& order) {
    Announce();
    const internal::NoYield noYield;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    rows_.Reorder(order);
    std::vector<int> place(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) place[at(order[i])] = static_cast<int>(i);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after = before;
    for (QModelIndex& moved : after) {
        if (at(moved.row()) < place.size()) moved = index(place[at(moved.row())], moved.column());
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

void ListboxModel::ColumnCount(int count) {
    count = std::max(count, 1);
    const int old = rows_.ColumnCount();
    if (count == old) return;
    Announce();
    const internal::NoYield noYield;
    if (count > old) {
        beginInsertColumns({}, old, count - 1);
    } else {
        beginRemoveColumns({}, count, old - 1);
    }
    rows_.ColumnCount(count);
    headings_.resize(at(count));
    if (count > old) {
        endInsertColumns();
    } else {
        endRemoveColumns();
    }
}

void ListboxModel::Cell(int row, int column, const String& text) {
    rows_.Cell(row, column, text);
    if (row >= announced_) return;
    firstChanged_ = lastChanged_ < 0 ? row : std::min(firstChanged_, row);
    lastChanged_ = std::max(lastChanged_, row);
    announceLater();
}

String ListboxModel::Heading(int column) const {
    if (column < 0 || column >= rows_.ColumnCount()) throw OutOfBoundsException();
    return headings_[at(column)];
}

void ListboxModel::Heading(int column, const String& text) {
    if (column < 0 || column >= rows_.ColumnCount()) throw OutOfBoundsException();
    headings_[at(column)] = text;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void ListboxModel::announceLater() {
    if (announcement_.isActive()) return;
    // The view lays itself out and paints itself anew each time, which is not worth it for rows below its lower edge.
    constexpr int kMoreThanAScreen = 200;
    constexpr qint64 kPause = 100;
    const qint64 passed = sinceAnnouncement_.isValid() ? sinceAnnouncement_.elapsed() : kPause;
    const qint64 wait = announced_ > kMoreThanAScreen ? std::max<qint64>(kPause - passed, 0) : 0;
    announcement_.start(static_cast<int>(wait), this);
}

void ListboxModel::Announce() {
    announcement_.stop();
    sinceAnnouncement_.start();
    const internal::NoYield noYield;
    if (lastChanged_ >= 0) {
        const int last = std::exchange(lastChanged_, -1);
        emit dataChanged(index(firstChanged_, 0), index(last, rows_.ColumnCount() - 1), {Qt::DisplayRole});
    }
    if (announced_ < rows_.Count()) {
        beginInsertRows({}, announced_, rows_.Count() - 1);
        announced_ = rows_.Count();
        endInsertRows();
    }
}

void ListboxModel::timerEvent(QTimerEvent* event) {
    if (event->timerId() == announcement_.timerId()) {
        Announce();
    } else if (event->timerId() == release_.timerId() && !rows_.ReleaseSome()) {
        release_.stop();
    }
}

Ref<FolderItem> ListboxModel::fileOf(int row) const {
    if (fileTagColumn_ < 0) return Nil;
    const Variant tag = rows_.Tag(row, fileTagColumn_);
    return tag.IsNil() ? Nil : GetFolderItem(tag.StringValue());
}

QString ListboxModel::asText(const std::vector<int>& rows) const {
    QStringList lines;
    QStringList cells;
    for (const String& heading : headings_) cells.append(onOneLine(native::ToQt(heading)).trimmed());
    const bool hasHeadings =
        std::any_of(cells.begin(), cells.end(), [](const QString& cell) { return !cell.isEmpty(); });
    if (fileTagColumn_ >= 0) cells.append(QStringLiteral("Path"));
    if (hasHeadings) lines.append(cells.join(QLatin1Char('\t')));
    for (const int row : rows) {
        cells.clear();
        for (int column = 0; column < rows_.ColumnCount(); ++column) cells.append(asField(rows_.Cell(row, column)));
        if (fileTagColumn_ >= 0) {
            const Ref<FolderItem> file = fileOf(row);
            cells.append(file ? asField(file->AbsolutePath()) : QString());
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

QMimeData* ListboxModel::DataOf(const std::vector<int>& rows) const {
    auto data = std::make_unique<QMimeData>();
    data->setText(asText(rows));
    QByteArray urls;
    QByteArray forPasting("copy");
    for (const int row : rows) {
        const Ref<FolderItem> file = fileOf(row);
        if (!file) continue;
        const String url = file->URLPath();
        urls.append(url.CString()).append("\r\n");
        forPasting.append('\n').append(url.CString());
    }
    if (!urls.isEmpty()) {
        data->setData(QStringLiteral("text/uri-list"), urls);
        // Many file managers paste by this alone, which says as well whether the files are copied or moved.
        data->setData(QStringLiteral("x-special/gnome-copied-files"), forPasting);
    }
    return data.release();
}

QVariant ListboxModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return ShownText(rows_.Cell(index.row(), index.column()));
}

QVariant ListboxModel::headerData(int section, Qt::Orientation orientation, int role) const {
    // The tip tells a heading that the width of its column cuts short.
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    if (orientation != Qt::Horizontal || !isText || section >= rows_.ColumnCount()) return {};
    return ShownText(headings_[at(section)]);
}

Qt::ItemFlags ListboxModel::flags(const QModelIndex& index) const {
    constexpr Qt::ItemFlags kRow = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.isValid() ? kRow | Qt::ItemIsDragEnabled : Qt::ItemIsDropEnabled;
}

QStringList ListboxModel::mimeTypes() const {
    return {QStringLiteral("text/plain"), QStringLiteral("text/uri-list")};
}

QMimeData* ListboxModel::mimeData(const QModelIndexList& indexes) const {
    std::vector<int> rows;
    for (const QModelIndex& index : indexes) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return DataOf(rows);
}

}  // namespace framework
