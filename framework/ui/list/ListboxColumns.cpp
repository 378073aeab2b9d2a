// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxColumns.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "framework/ui/drawing/CutText.h"
#include "framework/ui/list/ListboxModel.h"

namespace framework {
namespace {

constexpr int kNarrowest = 24;
constexpr int kWidest = 5000;
/// What a heading has on both sides of its text by default, together; the arrow of the sort column stands in one.
constexpr int kHeadingMargins = 13;
/// The same for a cell, in which the grid's line stands too.
constexpr int kCellMargins = 9;

/// How many rows are looked at to know what stands in a column.
constexpr int kSampledRows = 100;
/// More letters of a text than these ask for no room.
constexpr int kLongestText = 100;
/// Texts up to this length are numbers and words that are to be read whole.
constexpr int kShortText = 12;
/// What is wanted of a longer text at first. The texts of the first column are the names by which a person knows the
/// rows: more of them is wanted, and more again where there is room.
constexpr int kBeginning = 9;
constexpr int kBeginningOfName = 24;
constexpr int kLongName = 32;
/// What is wanted of every text before more of the longest.
constexpr int kUsualText = 20;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// An entry of a text of widths: pixels, or a share of the room or of what is left of it.
struct Entry {
    enum class Unit { Default, Pixels, Percent, Star };
    Unit unit = Unit::Default;
    double amount = 0;
};

Entry parseEntry(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos) return {};
    text = text.substr(start, text.find_last_not_of(' ') - start + 1);
    double amount = 1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), amount);
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    if (unit == "*") return {Entry::Unit::Star, amount};
    if (error != std::errc() || !std::isfinite(amount) || amount < 0) return {};
    if (unit == "%") return {Entry::Unit::Percent, amount};
    return unit.empty() ? Entry{Entry::Unit::Pixels, amount} : Entry{};
}

int bounded(double width) {
    return static_cast<int>(std::clamp<double>(width, kNarrowest, kWidest));
}

}  // namespace

ListboxColumns::ListboxColumns(QTableView& view, const ListboxRows& rows)
    : view_(view), header_(*view.horizontalHeader()), rows_(rows) {
    header_.setMinimumSectionSize(kNarrowest);
    header_.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header_.setHighlightSections(false);
    header_.setSectionsClickable(true);
    header_.setTextElideMode(Qt::ElideRight);
    QObject::connect(&header_, &QHeaderView::sectionResized, &view, [this](int column, int, int width) {
        if (!showing_) draggedByPerson(column, width);
    });
    // The toolkit's own fitting knows nothing of the room.
    QObject::disconnect(&header_, &QHeaderView::sectionHandleDoubleClicked, &view, nullptr);
    QObject::connect(&header_, &QHeaderView::sectionHandleDoubleClicked, &view,
                     [this](int column) { fitToTexts(column); });
    CountChanged();
}

void ListboxColumns::CountChanged() {
    const int columns = header_.count();
    wanted_.resize(at(columns), kDefault);
    directions_.resize(at(columns), 0);
    if (!has(headingIndex_)) headingIndex_ = -1;
    showIndicator();
    Share();
}

int ListboxColumns::visibleWidth() const {
    // A view that was never on show has not laid itself out.
    const bool laidOut = !view_.testAttribute(Qt::WA_PendingResizeEvent);
    return laidOut ? view_.viewport()->width() : view_.width() - 2 * view_.frameWidth();
}

/// Beside the scroll bar, whether it is there yet or not: no column is to move when it appears.
int ListboxColumns::room() const {
    const bool hasBar = view_.verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
    const int bar = hasBar ? view_.verticalScrollBar()->sizeHint().width() : 0;
    return std::max(view_.width() - 2 * view_.frameWidth() - bar, 0);
}

/// The width of a cell for so many letters.
int ListboxColumns::letters(int number) const {
    return number * view_.fontMetrics().averageCharWidth() + kCellMargins;
}

/// A narrow place, in which a letter of the heading can be read; less where a person wanted less.
int ListboxColumns::least(int column) const {
    const int narrow =
        header_.fontMetrics().horizontalAdvance(QLatin1Char('W') + QString(native::kRest)) + kHeadingMargins;
    const int wanted = wanted_[at(column)];
    const int place = std::min(wanted == kDefault ? narrow : std::min(wanted, narrow), room() / count());
    return std::max(place, kNarrowest);
}

int ListboxColumns::headingWidth(int column) const {
    const QString text = view_.model()->headerData(column, Qt::Horizontal).toString();
    return header_.fontMetrics().horizontalAdvance(text) + kHeadingMargins;
}

void ListboxColumns::measure() {
    const QFontMetrics metrics = view_.fontMetrics();
    const auto widthOf = [&](const QString& text) { return metrics.horizontalAdvance(text) + kCellMargins; };
    measuredRows_ = rows_.Count();
    const int step = (measuredRows_ + kSampledRows - 1) / kSampledRows;
    wishes_.assign(at(count()), {});
    for (int column = 0; column < count(); ++column) {
        Wishes& wishes = wishes_[at(column)];
        String previous;
        for (int row = 0; row < measuredRows_; row += step) {
            const String& cell = rows_.Cell(row, column);
            // Neighbours are often alike.
            if (cell.IsEmpty() || cell.SameBytes(previous)) continue;
            previous = cell;
            const QString text = ShownText(cell);
            wishes.isShort = wishes.isShort && text.size() <= kShortText;
            wishes.texts = std::max(wishes.texts, widthOf(text.left(kLongestText)));
            if (column > 0) continue;
            const bool isWhole = text.size() <= kBeginningOfName;
            const QString beginning = isWhole ? text : text.left(kBeginningOfName) + native::kRest;
            wishes.beginningOfName = std::max(wishes.beginningOfName, widthOf(beginning));
        }
    }
}

void ListboxColumns::Share() {
    measure();
    shareRoom();
}

/// One wish after the other is fulfilled. Where the room does not do for a wish of all columns, they get equal parts of
/// it, and what one of them has no use for goes to the others.
void ListboxColumns::shareRoom() {
    sharedRoom_ = room();
    widths_.clear();
    for (int column = 0; column < count(); ++column) widths_.push_back(least(column));
    int left = sharedRoom_ - std::accumulate(widths_.begin(), widths_.end(), 0);
    const auto widen = [&](const auto& wishOf) {
        std::vector<std::pair<int, int>> missing;
        missing.reserve(widths_.size());
        for (int column = 0; column < count(); ++column) {
            missing.emplace_back(wishOf(column) - widths_[at(column)], column);
        }
        std::sort(missing.begin(), missing.end());
        int others = count();
        for (const auto& [pixels, column] : missing) {
            const int wider = std::clamp(pixels, 0, std::max(left / others--, 0));
            widths_[at(column)] += wider;
            left -= wider;
        }
    };
    const auto widenOpen = [&](const auto& wishOf) {
        widen([&](int column) { return wanted_[at(column)] == kDefault ? wishOf(column, wishes_[at(column)]) : 0; });
    };

    widen([&](int column) { return wanted_[at(column)]; });
    widenOpen([&](int column, const Wishes& wishes) {
        if (column == 0) return std::min(wishes.texts, letters(kShortText));
        return wishes.isShort ? wishes.texts : 0;
    });
    widenOpen([&](int column, const Wishes& wishes) { return column == 0 ? wishes.beginningOfName : 0; });
    const bool isEmptyList = measuredRows_ == 0;
    const auto headingIfUsed = [&](int column, const Wishes& wishes) {
        return isEmptyList || wishes.texts > 0 ? headingWidth(column) : 0;
    };
    widenOpen([&](int column, const Wishes& wishes) {
        return std::min(std::max(wishes.texts, headingIfUsed(column, wishes)), letters(kBeginning));
    });
    widenOpen(headingIfUsed);
    widenOpen([&](int column, const Wishes& wishes) {
        if (column > 0) return 0;
        return isEmptyList ? letters(kBeginningOfName) : std::min(wishes.texts, letters(kLongName));
    });
    widenOpen([&](int, const Wishes& wishes) { return std::min(wishes.texts, letters(kUsualText)); });
    widenOpen([&](int, const Wishes& wishes) { return isEmptyList ? letters(kBeginning) : wishes.texts; });
    for (int one = 0; one < count(); ++one) {
        widenOpen([&](int column, const Wishes&) { return column == one ? headingWidth(column) : 0; });
    }
    show();
}

void ListboxColumns::Fit() {
    if (showing_) return;
    if (room() == sharedRoom_) return show();
    if (rows_.Count() != measuredRows_) measure();
    shareRoom();
}

/// Gives the columns their widths. Where they are too wide together, because a person widened one, those at the far end
/// give way.
void ListboxColumns::show() {
    std::vector<int> shown = widths_;
    int over = std::accumulate(shown.begin(), shown.end(), 0) - room();
    for (int column = count() - 1; column >= 0 && over > 0; --column) {
        const int given = std::clamp(shown[at(column)] - least(column), 0, over);
        shown[at(column)] -= given;
        over -= given;
    }
    shown.back() += std::max(visibleWidth() - std::accumulate(shown.begin(), shown.end(), 0), 0);
    showing_ = true;
    for (int column = 0; column < count(); ++column) header_.resizeSection(column, shown[at(column)]);
    showing_ = false;
}

/// Only the edge that is dragged moves, and what is behind it. The last column ends where the list does, wherever its
/// edge is dragged.
void ListboxColumns::draggedByPerson(int column, int width) {
    if (column + 1 == count()) return show();
    widths_[at(column)] = width;
    show();
    widths_[at(column)] = wanted_[at(column)] = header_.sectionSize(column);
}

/// Makes a column as wide as what stands in it, by the wish of a person. The others share what is left, of which they
/// get as much as they need to keep a given width or short texts whole.
void ListboxColumns::fitToTexts(int column) {
    measure();
    int limit = room();
    for (int other = 0; other < count(); ++other) {
        if (other == column) continue;
        const Wishes& wishes = wishes_[at(other)];
        const int needed = wanted_[at(other)] != kDefault ? wanted_[at(other)] : wishes.isShort ? wishes.texts : 0;
        limit -= std::max(needed, least(other));
    }
    const int texts = static_cast<QAbstractItemView&>(view_).sizeHintForColumn(column);
    const int whole = std::max({texts, headingWidth(column), kNarrowest});
    wanted_[at(column)] = std::clamp(limit, headingWidth(column), whole);
    shareRoom();
}

String ListboxColumns::Widths() const {
    std::string text;
    for (int column = 0; column < count(); ++column) {
        if (column > 0) text += ',';
        if (wanted_[at(column)] != kDefault) text += std::to_string(wanted_[at(column)]);
    }
    return String(text);
}

void ListboxColumns::Widths(const String& widths) {
    std::vector<Entry> entries;
    for (std::string_view rest = widths.Bytes(); !rest.empty();) {
        const std::size_t comma = rest.find(',');
        entries.push_back(parseEntry(rest.substr(0, comma)));
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    entries.resize(wanted_.size());

    double left = room();
    double stars = 0;
    std::fill(wanted_.begin(), wanted_.end(), kDefault);
    for (int column = count() - 1; column >= 0; --column) {
        const Entry& entry = entries[at(column)];
        if (entry.unit == Entry::Unit::Pixels) wanted_[at(column)] = bounded(entry.amount);
        if (entry.unit == Entry::Unit::Percent) wanted_[at(column)] = bounded(room() * entry.amount / 100);
        if (entry.unit == Entry::Unit::Star) {
            stars += entry.amount;
        } else {
            left -= wanted_[at(column)] == kDefault ? headingWidth(column) : wanted_[at(column)];
        }
    }
    for (int column = 0; column < count(); ++column) {
        const Entry& entry = entries[at(column)];
        if (entry.unit != Entry::Unit::Star) continue;
        wanted_[at(column)] = bounded(stars > 0 ? left * entry.amount / stars : 0);
    }
    Share();
}

void ListboxColumns::HeadingIndex(int column) {
    headingIndex_ = has(column) ? column : -1;
    showIndicator();
}

int ListboxColumns::Direction(int column) const {
    return has(column) ? directions_[at(column)] : 0;
}

void ListboxColumns::Direction(int column, int direction) {
    if (!has(column)) return;
    directions_[at(column)] = std::clamp(direction, -1, 1);
    showIndicator();
}

void ListboxColumns::Choose(int column) {
    const int old = Direction(column);
    const int direction = column == headingIndex_ ? -old : old;
    headingIndex_ = column;
    Direction(column, direction == 0 ? 1 : direction);
}

void ListboxColumns::showIndicator() {
    const int direction = Direction(headingIndex_);
    header_.setSortIndicatorShown(true);
    header_.setSortIndicator(direction == 0 ? -1 : headingIndex_,
                             direction < 0 ? Qt::DescendingOrder : Qt::AscendingOrder);
}

}  // namespace framework
