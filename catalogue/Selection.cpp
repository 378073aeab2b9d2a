// SPDX-License-Identifier: GPL-2.0-or-later
#include <array>
#include <utility>

#include "app/Window1.h"
#include "catalogue/RowRecord.h"

namespace marrowbeck {
namespace {

using namespace RowRecord;

/// The lines of the information panel, in their order; the colour space comes behind the first one.
constexpr std::array<Column, 9> kLinesAfterColorSpace = {kKind,      kCompressedSize, kSize,    kPixels,     kProfile,
                                                         kCopyright, kKeywords,       kCaption, kOrientation};

}  // namespace

// Nothing is asked of a tool here: the row holds all texts.
void Window1::ShowSelectedRow() {
    const int row = Listbox1->ListIndex();
    EXIFTextArea->Text(Listbox1->CellHelpTag(row, kExif));
    String text = Listbox1->CellHelpTag(row, kFilename);
    text += Chr(10) + "ColorSpace: " + Listbox1->CellTag(row, kColorSpaceTag).StringValue();
    for (const Column column : kLinesAfterColorSpace) text += Chr(10) + Listbox1->CellHelpTag(row, column);
    DataLabel->Text(text);
    ShowThumbnail();
}

// The row on which the selection came to rest.
void Window1::PreviewTimer_Action(Timer&) {
    if (Listbox1->ListIndex() != -1) ShowSelectedRow();
}

// The first row of a list on which nothing is selected yet. Selecting it arms the preview's timer too, which then shows
// the same once more.
void Window1::selectRowTimer_Action(Timer&) {
    if (!std::exchange(columnsShared, true)) Listbox1->ShareColumnWidths();
    if (Listbox1->ListIndex() != -1) return;
    Listbox1->Selected(0, true);
    ShowSelectedRow();
}

Ref<FolderItem> Window1::SelectedFile() const {
    if (Listbox1->ListIndex() == -1) return Nil;
    const String reference = Listbox1->CellTag(Listbox1->ListIndex(), kFileReferenceTag).StringValue();
    const Ref<FolderItem> file = GetFolderItem(reference, 0);
    return file && file->Exists() ? file : Nil;
}

void Window1::ShowFile(const String&) {
    OnOwnThread([this] {
        if (const Ref<FolderItem> file = SelectedFile()) RevealInFileManager(file);
    });
}

// Only what has a preview is opened.
void Window1::OpenPhoto(const String&) {
    OnOwnThread([this] {
        const Ref<FolderItem> file = SelectedFile();
        if (!file || !pic) return;
        // The first colon is the scheme's; those of the path would be misread by some viewers.
        const String escaped = ReplaceAll(file->URLPath(), ":", "%3A");
        ShowURL(Replace(escaped, "%3A", ":"));
    });
}

}  // namespace marrowbeck
