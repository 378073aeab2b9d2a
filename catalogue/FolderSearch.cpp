// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"
#include "app/Colors.h"
#include "app/Pictures.h"
#include "app/Window1.h"
#include "catalogue/MetadataQueries.h"
#include "catalogue/ReadAhead.h"

namespace marrowbeck {

// The run of the search thread, from a folder to a sorted list. An exception in it ends the thread where it stands:
// the wheel, the Stop tool and the filter then stay as they are until Stop is pressed.
void Window1::SizeThread1_Run(SizeThread&) {
    SegmentedControl1->Enabled(false);
    TotalLabel->Text("");
    if (gDropFolderpath) {
        gD = gDropFolderpath;
        gDropFolderpath = Nil;
    }
    if (gD) {
        App::Current()->gFolder = gD->GetSaveInfo(Nil, 0);
        Title("Marrowbeck: " + gD->DisplayName());
        Listbox1->DeleteAllRows();
        columnsShared = false;
        Canvas1->Backdrop(Pictures::zn240());
        const Ref<ToolButton> stopTool = As<ToolButton>(MyToolbar->Item(Toolbar1::kStopIndex));
        stopTool->Enabled(true);
        ProgressWheel1->Visible(true);
        gJPG = SegmentedControl1->Items(kJpgItem)->Selected();
        gTIFF = SegmentedControl1->Items(kTiffItem)->Selected();
        gPNG = SegmentedControl1->Items(kPngItem)->Selected();
        gANY = SegmentedControl1->Items(kAllItem)->Selected();
        if (Subfoldercheckbox->Value()) {
            SearchIndex();
        } else {
            WalkFolder();
        }
        Listbox1->Sort();
        Listbox1->ShareColumnWidths();
        ProgressWheel1->Visible(false);
        stopTool->Enabled(false);
    }
    SegmentedControl1->Enabled(true);
}

void Window1::ShowFilterState(bool filtered) {
    filterlabel->Text(filtered ? "Filtered" : "Filter");
    filterlabel->TextColor(filtered ? Colors::kDarkRed : Colors::kBlack);
}

void Window1::ShowSearchState(const String& text) {
    totalnumber->TextColor(Colors::kRed);
    totalnumber->Text(text);
}

// The folder is asked for afresh at each pass: one that was chosen meanwhile is walked on from the same index.
void Window1::WalkFolder() {
    const auto isWanted = [this](const Ref<FolderItem>& item) {
        const String type = item->Type();
        if (gANY) return App::Current()->ImageDict->HasKey(type);
        return (gJPG && type == "image/jpeg") || (gTIFF && type == "image/tiff") || (gPNG && type == "image/png");
    };
    const int count = gD->Count();
    ShowSearchState("No Image Files");
    ReadAhead ahead(
        [&](int i) {
            const Ref<FolderItem> item = gD->TrueItem(i);
            return item && isWanted(item) ? item->ShellPath() : String();
        },
        count, {MetadataQueries::kAll, MetadataQueries::kCamera});
    for (int i = 1; i <= count; ++i) {
        ahead.Reached(i);
        ShowFilterState(!gANY);
        const Ref<FolderItem> item = gD->TrueItem(i);
        if (isWanted(item)) checksize(item);
        LoopYield();
    }
}

}  // namespace marrowbeck
