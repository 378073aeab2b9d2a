// SPDX-License-Identifier: GPL-2.0-or-later
#include "plist/ChildIndex.h"

namespace marrowbeck {
namespace {

/// Up to here comparing costs less than hashing, and no memory.
constexpr int kFewNames = 8;

int walk(const ChildIndex::Names& names, const framework::String& name, int from) {
    for (int i = from; i <= names.Ubound(); ++i) {
        if (names(i) == name) return i;
    }
    return 0;
}

}  // namespace

void ChildIndex::catchUp(const Names& names) {
    if (!table_) table_ = std::make_unique<Table>();
    std::vector<int>& next = table_->next;
    for (int i = static_cast<int>(next.size()); i <= names.Ubound(); ++i) {
        const auto [place, isNew] = table_->ends.try_emplace(names(i), Ends{i, i});
        if (!isNew) {
            next[static_cast<std::size_t>(place->second.last)] = i;
            place->second.last = i;
        }
        next.push_back(0);
    }
}

int ChildIndex::First(const Names& names, const framework::String& name) {
    if (names.Ubound() <= kFewNames) return walk(names, name, 1);
    catchUp(names);
    const auto found = table_->ends.find(name);
    return found == table_->ends.end() ? 0 : found->second.first;
}

int ChildIndex::Next(const Names& names, int position) {
    if (names.Ubound() <= kFewNames) return walk(names, names(position), position + 1);
    catchUp(names);
    return table_->next[static_cast<std::size_t>(position)];
}

}  // namespace marrowbeck
