// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Colors.h"
#include "app/Window1.h"
#include "catalogue/ImageFacts.h"
#include "catalogue/ImageRow.h"

namespace marrowbeck {
namespace {

using namespace RowRecord;

/// The last row of the list, which is looked up anew for each write, since the list may be sorted while a tool runs.
class ListRow : public ImageRow {
  public:
    explicit ListRow(Window1& window) : window_(window) {}

  private:
    Listbox& list() { return *window_.Listbox1; }
    int row() { return list().LastIndex(); }

    void Show(Column column, const String& text) override { list().Cell(row(), column, text); }
    void Tell(Column column, const String& text) override {
        list().CellHelpTag(row(), column, kLabels[static_cast<std::size_t>(column)] + text);
    }
    void Keep(Tag tag, const String& value) override { list().CellTag(row(), tag, value); }
    void TellCamera(const String& path) override {
        const Array<String> fields = Split(window_.GetEXIF(path), Chr(0));
        list().CellHelpTag(row(), kExif, ImageFacts::CameraText(fields));
    }
    String Ask(const String& path) override { return window_.GetAll(path); }

    Window1& window_;
};

}  // namespace

// The row is on show from its first step, and a failure leaves it as far as it got.
void Window1::checksize(const Ref<FolderItem>& item) {
    if (!item) return;
    Listbox1->AddRow(Array<String>{item->Name()});
    // Stopped in the middle, the search leaves no half row.
    const Thread::FinishFirst wholeRow([this] { Listbox1->RemoveRow(Listbox1->LastIndex()); });
    ListRow(*this).Fill(item);

    totalnumber->TextColor(Colors::kWhite);
    totalnumber->Text("Image Files: " + Str(Listbox1->ListCount()));
    selectRowTimer->Period(kPreviewDelay);
    selectRowTimer->Mode(Timer::ModeSingle);
}

}  // namespace marrowbeck
