// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <utility>

#include "framework/ui/list/ListboxView.h"

namespace framework {

/// While one lives, changes of the selection are gathered; the last one to go raises the list's event for all of them.
class ListboxView::ChangeScope {
  public:
    explicit ChangeScope(ListboxView& view) : view_(view) { ++view_.changeScopes_; }
    ~ChangeScope() {
        if (--view_.changeScopes_ == 0 && std::exchange(view_.changed_, false)) view_.raiseChange();
    }
    ChangeScope(const ChangeScope&) = delete;
    ChangeScope& operator=(const ChangeScope&) = delete;

  private:
    ListboxView& view_;
};

}  // namespace framework
