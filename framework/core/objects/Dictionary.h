// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <initializer_list>
#include <unordered_map>
#include <utility>
#include <vector>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Variant.h"

namespace framework {

/// Values by keys. Keys are equal as Variants are: texts without regard to case, and the spelling that came first
/// stays. Keys stand in the order in which they first came in. All operations take constant time on average, also in a
/// loop that goes through the keys and removes some on its way.
class Dictionary : public Object {
  public:
    Dictionary() = default;
    Dictionary(std::initializer_list<std::pair<Variant, Variant>> pairs);

    /// The value under `key`. An absent key raises KeyNotFoundException.
    Variant Value(const Variant& key) const;
    /// Puts `value` under `key`, in place of the one that is there.
    void Value(const Variant& key, Variant value);
    /// The value under `key`, or `standIn` when the key is absent.
    Variant Lookup(const Variant& key, const Variant& standIn) const;
    bool HasKey(const Variant& key) const;
    /// Takes the key out; does nothing when it is absent.
    void Remove(const Variant& key);
    void Clear();

    int Count() const;
    /// The key at `index`, from 0. An index outside 0 to Count - 1 raises OutOfBoundsException.
    Variant Key(int index) const;

  private:
    struct KeyHash {
        std::size_t operator()(const Variant& key) const { return key.KeyHash(); }
    };
    struct Item {
        Variant value;
        std::size_t position;
    };
    using Table = std::unordered_map<Variant, Item, KeyHash>;
    using Entry = Table::value_type;

    void settle(std::size_t count) const;

    Table table_;
    // The entries in order of arrival, with null where one was removed. Those before settled_ are without a gap, and
    // from there to unsettled_ there is nothing but gap: so the n-th key is found without counting, and closing gaps
    // waits until someone asks.
    mutable std::vector<Entry*> order_;
    mutable std::size_t settled_ = 0;
    mutable std::size_t unsettled_ = 0;
};

}  // namespace framework
