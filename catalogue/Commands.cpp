// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"
#include "app/Preferences.h"
#include "app/Window1.h"

namespace marrowbeck {
namespace {

/// True as long as this lives.
class Raised {
  public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

  private:
    bool& flag_;
};

}  // namespace

// A search starts only while none runs; a request in between starts nothing and is not kept.
void Window1::StartSearch() {
    // While one handler empties the thumbnails, which takes its time, another may come.
    if (SizeThread1->State() != Thread::NotRunning || isStarting) return;
    const Raised starting(isStarting);
    totalnumber->Text("");
    // The thumbnails of the list that is about to go.
    const Ref<FolderItem> thumbnails = Preferences::ThumbnailsFolder();
    if (thumbnails->Exists()) Preferences::deleteFilesFromFolder(thumbnails);
    SizeThread1->Run();
}

void Window1::ChooseFolder(Fallback fallback) {
    if (!isChoosing) OnOwnThread([this, fallback] { choose(fallback); });
}

// A folder that waits to be searched goes before a choice.
void Window1::choose(Fallback fallback) {
    const Raised choosing(isChoosing);
    Ref<FolderItem> previous;
    if (!gDropFolderpath) {
        if (gD) previous = gD;
        const Ref<SelectFolderDialog> dialog = New<SelectFolderDialog>();
        dialog->ActionButtonCaption("Choose");
        dialog->Title("Marrowbeck");
        dialog->PromptText("Choose a Folder of Images");
        const String lastFolder = App::Current()->gFolder;
        if (!lastFolder.IsEmpty()) {
            dialog->InitialDirectory(GetFolderItem(lastFolder, 0));
        } else if (fallback == Fallback::Pictures) {
            dialog->InitialDirectory(SpecialFolder::Pictures());
        }
        gD = dialog->ShowModalWithin(Global<Window1>());
    }
    if (gD) {
        StartSearch();
    } else {
        gD = previous;
    }
}

void Window1::ChooseBtn_Action(PushButton&) {
    ChooseFolder(Fallback::Pictures);
}

void Window1::MyToolbar_Action(Toolbar& sender, const Ref<ToolItem>& item) {
    const String name = item->Name();
    if (name == "ChooseFolderTB") {
        ChooseFolder(Fallback::Desktops);
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
