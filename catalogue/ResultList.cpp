// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Window1.h"
#include "catalogue/RowRecord.h"

namespace marrowbeck {
namespace {

constexpr Color kTintedStripe = RGB(236, 243, 254);
constexpr Color kPlainStripe = RGB(255, 255, 255);

constexpr const char* kRevealEntry = "Highlight file in Finder";
constexpr const char* kOpenEntry = "Open image in viewer";

}  // namespace

bool Window1::Listbox1_CellBackgroundPaint(Graphics& g, int row, int) {
    g.ForeColor(row % 2 == 0 ? kTintedStripe : kPlainStripe);
    g.FillRect(0, 0, g.Width(), g.Height());
    return false;
}

// Sizes and pixels are compared as numbers. Rows of the same number are never told to be equal, so only the answer 1
// means anything to the sort.
bool Window1::Listbox1_CompareRows(int row1, int row2, int column, int& result) {
    if (column < RowRecord::kSize || column > RowRecord::kPixels) return false;
    const double a = Val(Listbox1->Cell(row1, column));
    const double b = Val(Listbox1->Cell(row2, column));
    result = b < a ? 1 : -1;
    return true;
}

// Only a selection that a person made with the left button or the keyboard leads to a preview.
void Window1::Listbox1_Change() {
    PreviewTimer->Mode(Timer::ModeOff);
    Listbox1->ScrollPosition(Listbox1->ListIndex());
    const Ref<ToolButton> showImage = As<ToolButton>(MyToolbar->Item(Toolbar1::kShowImageIndex));
    const Ref<ToolButton> showFile = As<ToolButton>(MyToolbar->Item(Toolbar1::kShowFileIndex));
    const bool single = Listbox1->SelCount() == 1;
    showImage->Enabled(single);
    showFile->Enabled(single);
    if (!single) {
        EXIFTextArea->Text("");
        DataLabel->Text("");
        Canvas1->Backdrop(Nil);
        pic = Nil;
        Canvas1->AccessibleName("Preview");
        Canvas1->Graphics().ClearRect(0, 0, Width(), Height());
    } else if (!sortclicked && !IsContextualClick()) {
        PreviewTimer->Period(kPreviewDelay);
        PreviewTimer->Mode(Timer::ModeSingle);
    }
    sortclicked = false;
}

bool Window1::Listbox1_ConstructContextualMenu(const Ref<MenuItem>& base, int, int) {
    for (const char* text : {kRevealEntry, kOpenEntry}) {
        const Ref<MenuItem> entry = New<MenuItem>();
        entry->Text(text);
        base->Append(entry);
    }
    return true;
}

bool Window1::Listbox1_ContextualMenuAction(const Ref<MenuItem>& hitItem) {
    if (Listbox1->SelCount() != 1) return false;
    if (hitItem->Text() == kRevealEntry) {
        ShowFile(Listbox1->Text());
    } else if (hitItem->Text() == kOpenEntry) {
        OpenPhoto(Listbox1->Text());
    }
    return false;
}

void Window1::Listbox1_DoubleClick() {
    OpenPhoto(Listbox1->Text());
}

bool Window1::Listbox1_SortColumn(int) {
    sortclicked = true;
    return false;
}

bool Window1::Listbox1_MouseDown(int, int) {
    sortclicked = false;
    return false;
}

}  // namespace marrowbeck
