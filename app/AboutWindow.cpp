// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/AboutWindow.h"

#include "app/Colors.h"
#include "app/Pictures.h"
#include "app/VersionLine.h"

namespace marrowbeck {

void AboutWindow::Layout() {
    Width(381);
    Height(323);
    MinWidth(64);
    MinHeight(64);
    MaxWidth(32000);
    MaxHeight(32000);
    Frame(FrameDocument);
    Composite(false);
    HasBackColor(false);
    Title("About Marrowbeck");
    MenuBarVisible(true);
    CloseButton(true);
    Resizeable(false);
    LiveResize(false);
    MaximizeButton(false);
    MinimizeButton(false);
}

void AboutWindow::CreateControls() {
    const auto label = [this](const char* name, int left, int top, int width, int height, const char* text) {
        const Ref<Label> made = Add<Label>(name, left, top, width, height);
        made->TextAlign(TextControl::AlignCenter);
        made->TextColor(Colors::kBlack);
        made->Text(text);
        return made;
    };

    Label1 = label("Label1", 48, 186, 284, 93,
                   "Takes stock of the images in a folder: what they measure, what they weigh, and what is written in "
                   "them.\n\nMade with care by the people of Marrowbeck.");
    Label1->Multiline(true);
    Label1->Italic(true);
    VersionText = label("VersionText", 19, 291, 342, 20, "Version");
    Canvas1 = Add<Canvas>("Canvas1", 122, 10, 137, 133);
    Canvas1->Backdrop(Pictures::Marrowbeck_small());
    Canvas1->AccessibleName("The emblem of Marrowbeck");
    Label2 = label("Label2", 140, 155, 100, 20, "Marrowbeck");
    Label2->Bold(true);
}

bool AboutWindow::Event_KeyDown(const String& key) {
    constexpr int kEscape = 27;
    if (key != Chr(kEscape)) return false;
    Close();
    return true;
}

void AboutWindow::Event_Open() {
    VersionText->Text(VersionLine());
}

}  // namespace marrowbeck
