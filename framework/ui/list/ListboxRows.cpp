// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxRows.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>

#include "framework/core/objects/Exceptions.h"

namespace framework {

const String& SharedTexts::Share(const String& text) {
    if (text.IsEmpty()) return text;
    String& place = places_[std::hash<std::string_view>()(text.Bytes()) % kPlaces];
    if (!place.SameBytes(text) || place.Encoding() != text.Encoding()) place = text;
    return place;
}

void SharedTexts::Forget() {
    places_.fill(String());
}

void ListboxRows::ColumnCount(int count) {
    const auto size = static_cast<std::size_t>(std::max(count, 1));
    const auto kept = std::min(size, static_cast<std::size_t>(columns_));
    for (Row& row : rows_) {
        auto texts = std::make_unique<String[]>(2 * size);
        std::move(row.texts.get(), row.texts.get() + kept, texts.get());
        String* const helpTags = row.texts.get() + columns_;
        std::move(helpTags, helpTags + kept, texts.get() + size);
        row.texts = std::move(texts);
        std::erase_if(row.tags, [kept](const TagEntry& tag) { return tag.column >= static_cast<int>(kept); });
    }
    columns_ = static_cast<int>(size);
}

void ListboxRows::Append(const Array<String>& texts) {
    Row row{std::make_unique<String[]>(2 * static_cast<std::size_t>(columns_)), {}};
    const int given = std::min(texts.Ubound() + 1, columns_);
    for (int column = 0; column < given; ++column) {
        row.texts[static_cast<std::size_t>(column)] = shared_.Share(texts(column));
    }
    rows_.push_back(std::move(row));
    lastAppended_ = Count() - 1;
}

void ListboxRows::Remove(int row) {
    at(row);
    rows_.erase(rows_.begin() + row);
    if (lastAppended_ == row) {
        lastAppended_ = -1;
    } else if (lastAppended_ > row) {
        --lastAppended_;
    }
    ++revision_;
}

void ListboxRows::Clear() {
    // Rows of an earlier time that still wait go on waiting.
    if (cleared_.empty()) {
        cleared_.swap(rows_);
    } else {
        std::move(rows_.begin(), rows_.end(), std::back_inserter(cleared_));
        std::vector<Row>().swap(rows_);
    }
    shared_.Forget();
    lastAppended_ = -1;
    ++revision_;
}

bool ListboxRows::ReleaseSome() {
    // A few milliseconds' worth.
    constexpr std::ptrdiff_t kAtOnce = 1000;
    cleared_.erase(cleared_.end() - std::min(kAtOnce, std::ssize(cleared_)), cleared_.end());
    if (!cleared_.empty()) return true;
    // The memory is given back too; a later search may find much less.
    std::vector<Row>().swap(cleared_);
    return false;
}

void ListboxRows::Reorder(const std::vector<int>& order) {
    std::vector<Row> moved;
    moved.reserve(order.size());
    for (const int row : order) moved.push_back(std::move(at(row)));
    std::move(moved.begin(), moved.end(), rows_.begin());
    const auto last = std::find(order.begin(), order.end(), lastAppended_);
    if (last != order.end()) lastAppended_ = static_cast<int>(std::distance(order.begin(), last));
    ++revision_;
}

void ListboxRows::Cell(int row, int column, const String& text) {
    at(row).texts[checkedColumn(column)] = shared_.Share(text);
}

void ListboxRows::HelpTag(int row, int column, const String& text) {
    at(row).texts[helpTagPlace(column)] = shared_.Share(text);
}

Variant ListboxRows::Tag(int row, int column) const {
    checkedColumn(column);
    for (const TagEntry& tag : at(row).tags) {
        if (tag.column == column) return tag.value;
    }
    return {};
}

void ListboxRows::Tag(int row, int column, const Variant& value) {
    checkedColumn(column);
    std::vector<TagEntry>& tags = at(row).tags;
    std::erase_if(tags, [column](const TagEntry& tag) { return tag.column == column; });
    if (value.IsNil()) return;
    const bool isText = value.GetKind() == Variant::Kind::String;
    tags.push_back({column, isText ? Variant(shared_.Share(value.StringValue())) : value});
}

const ListboxRows::Row& ListboxRows::at(int row) const {
    if (row < 0 || row >= Count()) throw OutOfBoundsException();
    return rows_[static_cast<std::size_t>(row)];
}

std::size_t ListboxRows::checkedColumn(int column) const {
    if (column < 0 || column >= columns_) throw OutOfBoundsException();
    return static_cast<std::size_t>(column);
}

}  // namespace framework
