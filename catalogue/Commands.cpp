// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"
#include "app/Preferences.h"
#include "app/Window1.h"

namespace marrowbeck {

// A search starts only while none runs; a request in between starts nothing and is not kept.
void Window1::StartSearch() {
    if (SizeThread1->State() != Thread::NotRunning) return;
    totalnumber->Text("");
    // The thumbnails of the list that is about to go.
    const Ref<FolderItem> thumbnails = Preferences::ThumbnailsFolder();
    if (thumbnails->Exists()) Preferences::deleteFilesFromFolder(thumbnails);
    SizeThread1->Run();
}

// A folder that waits to be searched goes before a choice. `fallback` is where the dialog opens when no folder was ever
// searched; with Nil the desktop decides.
void Window1::ChooseFolder(const Ref<FolderItem>& fallback) {
    Ref<FolderItem> previous;
    if (!gDropFolderpath) {
        if (gD) previous = gD;
        const Ref<SelectFolderDialog> dialog = New<SelectFolderDialog>();
        dialog->ActionButtonCaption("Choose");
        dialog->Title("Marrowbeck");
        dialog->PromptText("Choose a Folder of Images");
        const String lastFolder = App::Current()->gFolder;
        dialog->InitialDirectory(lastFolder.IsEmpty() ? fallback : GetFolderItem(lastFolder, 0));
        gD = dialog->ShowModalWithin(Global<Window1>());
    }
    if (gD) {
        StartSearch();
    } else {
        gD = previous;
    }
}

void Window1::ChooseBtn_Action(PushButton&) {
    ChooseFolder(SpecialFolder::Pictures());
}

void Window1::MyToolbar_Action(Toolbar& sender, const Ref<ToolItem>& item) {
    const String name = item->Name();
    if (name == "ChooseFolderTB") {
        ChooseFolder(Nil);
    } else if (name == "RefreshTB") {
        StartSearch();
    } else if (name == "ShowImageTB") {
        OpenPhoto(Listbox1->Text());
    } else if (name == "ShowFileTB") {
        ShowFile(Listbox1->Text());
    } else if (name == "StopTB") {
        SizeThread1->Kill();
        Listbox1->ShareColumnWidths();
        ProgressWheel1->Visible(false);
        sender.Item(Toolbar1::kStopIndex)->Enabled(false);
        SegmentedControl1->Enabled(true);
    }
}

// The one starter that leaves the thumbnails alone: the same pictures are about to be listed again.
void Window1::SegmentedControl1_Action(SegmentedControl&, int) {
    if (SizeThread1->State() != Thread::NotRunning) return;
    totalnumber->Text("");
    SizeThread1->Run();
}

// Of several things dropped at once the first counts.
void Window1::Event_DropObject(const Ref<DragItem>& obj, int) {
    if (obj->FolderItemAvailable()) {
        if (obj->FolderItem()->Directory()) {
            gDropFolderpath = obj->FolderItem();
            StartSearch();
        } else {
            MsgBox(kNotAFolder);
        }
    }
    MouseCursor(System::Cursors::StandardPointer);
}

bool Window1::Event_DragEnter(const Ref<DragItem>&, int) {
    MouseCursor(System::Cursors::HandClosed);
    return true;
}

void Window1::Event_MouseExit() {
    MouseCursor(System::Cursors::StandardPointer);
}

}  // namespace marrowbeck
