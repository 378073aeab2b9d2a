// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "framework/ui/menu/MenuItem.h"

class QMenuBar;

namespace framework {

/// The menus of the application, shown at the top of each window that shows a menu bar. Its shortcuts work in all of
/// them.
class MenuBar : public Object {
  public:
    /// Adds a menu behind the others, when it has its items.
    void Append(const Ref<MenuItem>& menu);
    /// The menu at `index`, from 0; OutOfBoundsException beyond.
    Ref<MenuItem> Item(int index) const;
    int Count() const { return static_cast<int>(menus_.size()); }

    /// Fills the toolkit's bar of one window. For the framework alone.
    void ShowIn(QMenuBar& bar);

  private:
    std::vector<Ref<MenuItem>> menus_;
};

}  // namespace framework
