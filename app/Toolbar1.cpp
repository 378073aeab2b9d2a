// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Toolbar1.h"

#include "app/Pictures.h"

namespace marrowbeck {

Toolbar1::Toolbar1() {
    const auto append = [this](const char* name, int style, bool enabled, const char* caption, const char* helpTag,
                               const Ref<Picture>& icon) {
        const Ref<ToolButton> button = New<ToolButton>();
        button->Name(name);
        button->Style(style);
        button->Enabled(enabled);
        button->Caption(caption);
        button->HelpTag(helpTag);
        button->Icon(icon);
        Append(button);
        return button;
    };

    ChooseFolderTB = append("ChooseFolderTB", ToolItem::StylePushButton, true, "Open Folder", "Choose folder of Images",
                            Pictures::folder());
    ShowImageTB = append("ShowImageTB", ToolItem::StylePushButton, false, "Open Image", "Show Image in Viewer",
                         Pictures::image_alt());
    ShowFileTB =
        append("ShowFileTB", ToolItem::StylePushButton, false, "Show File", "Show File in Finder", Pictures::find());
    ToolItem3 = append("ToolItem3", ToolItem::StyleSeparator, true, "Untitled", "", Nil);
    FlexSpace1 = append("FlexSpace1", ToolItem::StyleFlexibleSpace, true, "Untitled", "", Nil);
    RefreshTB =
        append("RefreshTB", ToolItem::StylePushButton, true, "Reload", "Reload result list", Pictures::reload());
    StopTB = append("StopTB", ToolItem::StylePushButton, false, "Stop", "Stop result list", Pictures::stop());
}

}  // namespace marrowbeck
