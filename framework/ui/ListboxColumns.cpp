#include "framework/ui/ListboxColumns.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>
#include <charconv>
#include <cmath>
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
constexpr int kNarrowestDefault = 52;
/// Bounds of the first column's default width: a name of usual length is to be read, and the other columns seen.
constexpr int kNarrowestFirst = 110;
constexpr int kWidestFirst = 190;
/// How much wider than their headings the others become where there is room.
constexpr int kMostSpare = 50;

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
    if (!has(headingIndex_)) headingIndex_ = -1;
    showIndicator();
    Fit();
}

int ListboxColumns::room() const {
    // A view that was never on show has not laid itself out.
    const bool laidOut = !view_.testAttribute(Qt::WA_PendingResizeEvent);
    return laidOut ? view_.viewport()->width() : view_.width() - 2 * view_.frameWidth();
}

int ListboxColumns::defaultWidth(int column) const {
    const QString text = view_.model()->headerData(column, Qt::Horizontal).toString().trimmed();
    const int heading = std::max(header_.fontMetrics().horizontalAdvance(text) + kHeadingMargins, kNarrowestDefault);
    if (column > 0) return heading;
    int others = 0;
    for (int other = 1; other < count(); ++other) {
        others += wanted_[at(other)] == kDefault ? defaultWidth(other) : wanted_[at(other)];
    }
    return std::max(heading, std::clamp(room() - others, kNarrowestFirst, kWidestFirst));
}

void ListboxColumns::Fit() {
    if (fitting_) return;
    fitting_ = true;
    const int last = count() - 1;
    std::vector<int> widths;
    int spare = room();
    for (int column = 0; column <= last; ++column) {
        widths.push_back(wanted_[at(column)] == kDefault ? defaultWidth(column) : wanted_[at(column)]);
        spare -= widths.back();
    }
    // The last column takes its share and what nobody else takes.
    const int share = std::clamp(spare / std::max(last, 1), 0, kMostSpare);
    for (int column = 1; column < last; ++column) {
        if (wanted_[at(column)] != kDefault) continue;
        widths[at(column)] += share;
        spare -= share;
    }
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
            left -= wanted_[at(column)] == kDefault ? defaultWidth(column) : wanted_[at(column)];
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
