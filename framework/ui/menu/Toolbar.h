// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "framework/core/threads/Event.h"
#include "framework/ui/control/RectControl.h"
#include "framework/ui/menu/ToolItem.h"

namespace framework {

/// A row of tool items between a window's menu bar and its content, icons over captions.
class Toolbar : public RectControl {
  public:
    Toolbar();

    /// A person pressed a button of the toolbar.
    Event<void(Toolbar& sender, Ref<ToolItem> item)> OnAction;

    /// Adds an item behind the others.
    void Append(const Ref<ToolItem>& item);
    /// The item at `index`, from 0 in the order of appending; OutOfBoundsException beyond.
    Ref<ToolItem> Item(int index) const;
    int Count() const { return static_cast<int>(items_.size()); }

  protected:
    String OwnText() const override { return "Toolbar"; }

  private:
    std::vector<Ref<ToolItem>> items_;
};

}  // namespace framework
