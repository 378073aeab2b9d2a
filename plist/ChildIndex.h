// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "framework/core/objects/Array.h"
#include "framework/core/text/String.h"

namespace marrowbeck {

/// Finds the positions of a name among the names of a node's children, which start at position 1, without regard to
/// case. Reads names that were appended when it is next asked; after any other change it has to be dropped. A few names
/// are simply walked through.
class ChildIndex {
  public:
    using Names = framework::Array<framework::String>;

    /// The first position of `name`, 0 when it is not there.
    int First(const Names& names, const framework::String& name);
    /// The next position behind `position` that has the same name, 0 when there is none.
    int Next(const Names& names, int position);
    void Drop() { table_.reset(); }

  private:
    struct Hash {
        std::size_t operator()(const framework::String& name) const noexcept { return name.Hash(); }
    };
    struct Ends {
        int first;
        int last;
    };
    struct Table {
        std::unordered_map<framework::String, Ends, Hash> ends;
        /// For each position the next one of the same name, or 0.
        std::vector<int> next{0};
    };

    void catchUp(const Names& names);

    std::unique_ptr<Table> table_;
};

}  // namespace marrowbeck
