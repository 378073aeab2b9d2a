// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The menu bar: File, Edit and Help.
class MenuBar1 : public MenuBar {
  public:
    MenuBar1();

    /// The File, Edit and Help menus.
    void Untitled0();
    void Untitled1();
    void Untitled2();
};

}  // namespace marrowbeck
