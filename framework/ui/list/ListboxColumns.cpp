// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxColumns.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace framework {
namespace {

constexpr int kNarrowest = 24;
constexpr int kWidest = 5000;
/// What a heading has on both sides of its text by default, together; the arrow of the sort column stands in one.
constexpr int kHeadingMargins = 13;
/// The same for a cell, in which the grid's line stands too.
constexpr int kCellMargins = 9;
/// The least that a column of texts of no usual length gets, as so many letters; more in the first one, where the names
/// stand by which a person knows the rows.
constexpr int kFewLetters = 6;
constexpr int kLettersOfNames = 13;
/// How many shares of the room that is left the first column gets, where the names stand; the others of its kind get
/// one.
constexpr int kSharesOfNames = 3;

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

ListboxColumns::ListboxColumns(QTableView& view) : view_(view), header_(*view.horizontalHeader()) {
    header_.setMinimumSectionSize(kNarrowest);
    header_.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header_.setHighlightSections(false);
    header_.setSectionsClickable(true);
    header_.setTextElideMode(Qt::ElideRight);
    QObject::connect(&header_, &QHeaderView::sectionResized, &view, [this](int column, int, int width) {
        if (!fitting_) resizedByPerson(column, width);
    });
    CountChanged();
}

void ListboxColumns::CountChanged() {
    const int columns = header_.count();
    wanted_.resize(at(columns), kDefault);
    directions_.resize(at(columns), 0);
    usual_.resize(at(columns));
    if (!has(headingIndex_)) headingIndex_ = -1;
    showIndicator();
    Fit();
}

int ListboxColumns::room() const {
    // A view that was never on show has not laid itself out.
    const bool laidOut = !view_.testAttribute(Qt::WA_PendingResizeEvent);
    return laidOut ? view_.viewport()->width() : view_.width() - 2 * view_.frameWidth();
}

int ListboxColumns::headingWidth(int column) const {
    const QString text = view_.model()->headerData(column, Qt::Horizontal).toString().trimmed();
    return header_.fontMetrics().horizontalAdvance(text) + kHeadingMargins;
}

int ListboxColumns::contentWidth(int column) const {
    const QFontMetrics metrics = view_.fontMetrics();
    const QString& usual = usual_[at(column)];
    const int letters = column == 0 ? kLettersOfNames : kFewLetters;
    const int width = usual.isEmpty() ? letters * metrics.averageCharWidth() : metrics.horizontalAdvance(usual);
    return std::max(width + kCellMargins, kNarrowest);
}

/// The widths of the columns that nobody gave one: whole for usual contents first, then for headings, as many as there
/// is room for; what is left goes to the columns whose texts may be long.
std::vector<int> ListboxColumns::defaultWidths() const {
    std::vector<int> widths;
    std::vector<int> open;
    int left = room();
    for (int column = 0; column < count(); ++column) {
        const bool isOpen = wanted_[at(column)] == kDefault;
        if (isOpen) open.push_back(column);
        widths.push_back(isOpen ? contentWidth(column) : wanted_[at(column)]);
        left -= widths.back();
    }
    const auto missing = [&](int column) { return headingWidth(column) - widths[at(column)]; };
    std::vector<int> headings = open;
    std::stable_sort(headings.begin(), headings.end(),
                     [&](int one, int other) { return missing(one) < missing(other); });
    for (const int column : headings) {
        const int wider = std::clamp(missing(column), 0, std::max(left, 0));
        widths[at(column)] += wider;
        left -= wider;
    }
    const auto shares = [&](int column) {
        if (!usual_[at(column)].isEmpty()) return 0;
        return column == 0 ? kSharesOfNames : 1;
    };
    int rest = 0;
    for (const int column : open) rest += shares(column);
    for (const int column : open) {
        if (left <= 0 || rest == 0) break;
        const int share = left * shares(column) / rest;
        rest -= shares(column);
        widths[at(column)] += share;
        left -= share;
    }
    return widths;
}

void ListboxColumns::UsualText(int column, const QString& text) {
    usual_[at(column)] = text;
    Fit();
}

void ListboxColumns::Fit() {
    if (fitting_) return;
    fitting_ = true;
    const std::vector<int> widths = defaultWidths();
    const int spare = room() - std::accumulate(widths.begin(), widths.end(), 0);
    const int last = count() - 1;
    for (int column = 0; column <= last; ++column) {
        header_.resizeSection(column, widths[at(column)] + (column == last ? std::max(spare, 0) : 0));
    }
    fitting_ = false;
}

/// All columns but the last keep the widths that they have now, so that only the edge that is dragged moves.
void ListboxColumns::resizedByPerson(int column, int width) {
    for (int other = 0; other + 1 < count(); ++other) wanted_[at(other)] = header_.sectionSize(other);
    wanted_.back() = kDefault;
    wanted_[at(column)] = width;
    Fit();
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
            left -= wanted_[at(column)] == kDefault ? contentWidth(column) : wanted_[at(column)];
        }
    }
    for (int column = 0; column < count(); ++column) {
        const Entry& entry = entries[at(column)];
        if (entry.unit != Entry::Unit::Star) continue;
        wanted_[at(column)] = bounded(stars > 0 ? left * entry.amount / stars : 0);
    }
    Fit();
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
