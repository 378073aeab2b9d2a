// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"

namespace framework {

class FolderItem;

/// What a person drags over a window: the first of the items, where there are several.
class DragItem : public Object {
  public:
    /// From a list of URIs as RFC 2483 has it: one a line, with comments that begin with `#`.
    explicit DragItem(std::string_view uriList);

    /// Whether the item is a file or folder of this machine.
    bool FolderItemAvailable() const { return path_.has_value(); }
    /// The file or folder, Nil when there is none. It is made at the first call, with a link followed.
    Ref<framework::FolderItem> FolderItem() const;

  private:
    std::optional<std::string> path_;
    mutable Ref<framework::FolderItem> item_;
};

}  // namespace framework
