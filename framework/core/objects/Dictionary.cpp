// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Dictionary.h"

#include <algorithm>

#include "framework/core/objects/Exceptions.h"

namespace framework {

Dictionary::Dictionary(std::initializer_list<std::pair<Variant, Variant>> pairs) {
    for (const auto& [key, value] : pairs) Value(key, value);
}

Variant Dictionary::Value(const Variant& key) const {
    const auto found = table_.find(key);
    if (found == table_.end()) throw KeyNotFoundException("A dictionary was asked for a key that it does not hold.");
    return found->second.value;
}

void Dictionary::Value(const Variant& key, Variant value) {
    const auto [place, isNew] = table_.try_emplace(key);
    // The old value leaves with the parameter, at the end: what its destruction sets off finds all in order.
    std::swap(place->second.value, value);
    if (!isNew) return;
    // Gaps at most double the memory of the order.
    if (order_.size() >= 16 && order_.size() / 2 >= table_.size()) {
        settle(table_.size() - 1);
        order_.resize(settled_);
        unsettled_ = settled_;
    }
    place->second.position = order_.size();
    order_.push_back(&*place);
}

Variant Dictionary::Lookup(const Variant& key, const Variant& standIn) const {
    const auto found = table_.find(key);
    return found == table_.end() ? standIn : found->second.value;
}

bool Dictionary::HasKey(const Variant& key) const {
    return table_.contains(key);
}

void Dictionary::Remove(const Variant& key) {
    const auto found = table_.find(key);
    if (found == table_.end()) return;
    const std::size_t position = found->second.position;
    order_[position] = nullptr;
    if (position < settled_) {
        // Next to the gap the gap just grows; elsewhere everything from here on has to be settled anew.
        if (position + 1 != settled_) unsettled_ = position + 1;
        settled_ = position;
    }
    // The entry goes last, for the sake of what its destruction sets off.
    const auto removed = table_.extract(found);
}

void Dictionary::Clear() {
    settled_ = 0;
    unsettled_ = 0;
    order_.clear();
    const Table removed = std::exchange(table_, {});
}

int Dictionary::Count() const {
    return static_cast<int>(table_.size());
}

Variant Dictionary::Key(int index) const {
    if (index < 0 || index >= Count()) throw OutOfBoundsException();
    const auto position = static_cast<std::size_t>(index);
    settle(position + 1);
    return order_[position]->first;
}

/// Closes gaps until the first `count` entries stand side by side.
void Dictionary::settle(std::size_t count) const {
    while (settled_ < count) {
        while (!order_[unsettled_]) ++unsettled_;
        Entry* entry = std::exchange(order_[unsettled_++], nullptr);
        entry->second.position = settled_;
        order_[settled_++] = entry;
    }
}

}  // namespace framework
