// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "framework/core/core.h"

namespace marrowbeck {

/// The items of many paths, as GetFolderItemFromShellPath gives them, for who goes through them in order. The disk is
/// not asked for each: each enclosing folder is looked at once, together with those that come next.
class PathItems {
  public:
    /// The paths have to outlive this.
    explicit PathItems(const Array<String>& paths) : paths_(paths) {}

    Ref<FolderItem> At(int index);

  private:
    void askFrom(int index, std::string folder);

    const Array<String>& paths_;
    std::unordered_map<std::string, Ref<FolderItem>> folders_;
};

}  // namespace marrowbeck
