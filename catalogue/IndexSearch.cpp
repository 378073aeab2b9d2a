// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"
#include "app/Window1.h"
#include "catalogue/MetadataQueries.h"
#include "catalogue/ReadAhead.h"
#include "fileutil/PathItems.h"
#include "framework/core/files/Paths.h"

namespace marrowbeck {
// Finds the images of the folder and of all folders in it.
void Window1::SearchIndex() {
    ShowSearchState("Searching Folders for Image files");
    // The text above is to be seen before the long call.
    App::Current()->DoEvents(-1);

    const Ref<Shell> shell = New<Shell>();
    const auto ask = [&](const char* term) { shell->Execute(MetadataQueries::kFilesIn + gD->ShellPath() + term); };
    ShowFilterState(!gANY);
    if (gANY) {
        ask(MetadataQueries::kImageTerm);
    } else {
        // The control allows one item at a time. With more of them, the last answer counts.
        if (gJPG) ask(MetadataQueries::kJpegTerm);
        if (gTIFF) ask(MetadataQueries::kTiffTerm);
        if (gPNG) ask(MetadataQueries::kPngTerm);
    }
    String result;
    if (shell->ErrorCode() != 0) {
        MsgBox("Error code: " + Str(shell->ErrorCode()));
    } else {
        result = shell->Result();
    }

    // Each path is ended by a NUL, so the last element is empty and its index is the number of files.
    const Array<String> paths = Split(result, Chr(0));
    const int last = paths.Ubound();
    TotalLabel->Text(last != -1 ? "Total found: " + Str(last) : String());
    ShowSearchState("No Image Files");
    ReadAhead ahead([&paths](int i) { return String(Paths::EscapeForShell(paths(i).Bytes())); }, last,
                    {MetadataQueries::kAll, MetadataQueries::kCamera});
    PathItems items(paths);
    for (int i = 0; i <= last; ++i) {
        ahead.Reached(i);
        checksize(items.At(i));
        LoopYield();
    }
}

}  // namespace marrowbeck
