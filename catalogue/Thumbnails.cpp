// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"
#include "app/Window1.h"
#include "catalogue/RowRecord.h"
#include "catalogue/ThumbnailCache.h"

namespace marrowbeck {
namespace {

constexpr int kPictureDepth = 32;
/// The middle of the preview, in pixels from its edges.
constexpr double kCentre = 120.0;

}  // namespace

// There is no queue: while a thumbnail is being made, a further wish is lost.
void Window1::ShowThumbnail() {
    if (PicturescaleThread1->State() != Thread::NotRunning) return;
    pic = Nil;
    Canvas1->AccessibleName("Preview");
    PicturescaleThread1->Run();
}

void Window1::PicturescaleThread1_Run(PicturescaleThread&) {
    const Ref<FolderItem> folder = GetFolderItem(App::Current()->gFolder, 0);
    if (!folder || !folder->Exists()) return;
    if (Listbox1->ListIndex() == -1) return;
    const int row = Listbox1->ListIndex();
    const Ref<FolderItem> file = GetFolderItem(Listbox1->CellTag(row, RowRecord::kFileReferenceTag).StringValue(), 0);
    const String pixels = Listbox1->Cell(row, RowRecord::kPixels);
    const int width = Variant(Val(NthField(pixels, "x", 1))).IntegerValue();
    const int height = Variant(Val(NthField(pixels, "x", 2))).IntegerValue();
    if (const Ref<Picture> thumbnail = CreateThumbnail(file, width, height)) {
        const Ref<Picture> copy = NewPicture(thumbnail->Width(), thumbnail->Height(), kPictureDepth);
        copy->Graphics().DrawPicture(thumbnail, 0, 0);
        pic = copy;
        Canvas1->AccessibleName("Preview of " + file->DisplayName());
    }
    Canvas1->Backdrop(Nil);
    Canvas1->Refresh(true);
}

Ref<Picture> Window1::CreateThumbnail(const Ref<FolderItem>& file, int width, int height) {
    ThumbnailEntry::MakeFolder();
    const ThumbnailEntry entry(file);
    if (!entry.File()->Exists()) {
        // Whether the tool succeeded shows by the file alone.
        const Ref<Shell> shell = New<Shell>();
        shell->Execute(entry.Command(width, height));
    }
    return Picture::Open(entry.File());
}

void Window1::Canvas1_Paint(Graphics& g) {
    if (!pic) return;
    const int x = static_cast<int>(kCentre - pic->Width() / 2.0);
    const int y = static_cast<int>(kCentre - pic->Height() / 2.0);
    g.DrawPicture(pic, x, y);
}

void Window1::Canvas1_DoubleClick(int, int) {
    OpenPhoto(Listbox1->Text());
}

}  // namespace marrowbeck
