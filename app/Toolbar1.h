// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The tools over the main window. Their order is binding: handlers find some of them by index.
class Toolbar1 : public Toolbar {
  public:
    Toolbar1();

    static constexpr int kShowImageIndex = 1;
    static constexpr int kShowFileIndex = 2;
    static constexpr int kStopIndex = 6;

    Ref<ToolButton> ChooseFolderTB;
    Ref<ToolButton> ShowImageTB;
    Ref<ToolButton> ShowFileTB;
    Ref<ToolButton> ToolItem3;
    Ref<ToolButton> FlexSpace1;
    Ref<ToolButton> RefreshTB;
    Ref<ToolButton> StopTB;
};

}  // namespace marrowbeck
