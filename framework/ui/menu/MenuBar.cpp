// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/menu/MenuBar.h"

#include <QMenu>
#include <QMenuBar>

#include "framework/core/objects/Exceptions.h"

namespace framework {

void MenuBar::Append(const Ref<MenuItem>& menu) {
    menus_.push_back(menu);
}

Ref<MenuItem> MenuBar::Item(int index) const {
    if (index < 0 || index >= Count()) throw OutOfBoundsException();
    return menus_[static_cast<std::size_t>(index)];
}

void MenuBar::ShowIn(QMenuBar& bar) {
    for (const Ref<MenuItem>& menu : menus_) {
        QAction* const action = menu->Native()->menuAction();
        if (!bar.actions().contains(action)) bar.addAction(action);
        menu->EnableAtRest();
    }
}

}  // namespace framework
