// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "framework/core/files/Disk.h"
#include "framework/core/objects/Object.h"

namespace framework::internal {

/// The children of a folder as they were at one moment, sorted by the bytes of their names. Kept as the text in which
/// they came.
class ChildList : public Object {
  public:
    /// Reads the folder.
    ChildList(const Disk& disk, std::string folder);

    /// Why there may be more of them; 0 where these are all.
    int Failure() const { return failure_; }
    std::size_t Count() const { return starts_.size(); }
    std::string_view NameAt(std::size_t index) const;
    /// What the folder itself does not tell is asked when it is first wanted, together with what it does not tell of
    /// the children behind. A child for which the disk does not answer goes for a file, or a link that leads to none.
    base::PathKind KindAt(std::size_t index) const;
    /// The codes of a file whose name tells no type. Asked when they are first wanted, together with those of the files
    /// behind it that want them too.
    FileCodes CodesAt(std::size_t index) const;

  private:
    base::PathKind told(std::size_t index) const;
    void askKindsFrom(std::size_t index) const;
    void askCodesFrom(std::size_t index) const;
    bool wantsCodes(std::size_t index) const;

    Disk disk_;
    std::string folder_;
    /// The letters in it change with what is asked.
    mutable std::string text_;
    int failure_ = 0;
    /// Where the letter of each child stands.
    std::vector<std::uint32_t> starts_;
    /// For which children codes were asked, and those that have some.
    mutable std::vector<bool> asked_;
    mutable std::unordered_map<std::size_t, FileCodes> codes_;
};

}  // namespace framework::internal
