// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>

#include "app/Colors.h"
#include "app/Window1.h"
#include "catalogue/ImageFacts.h"
#include "catalogue/RowRecord.h"

namespace marrowbeck {
namespace {

using namespace RowRecord;

/// Fields of the answer on an image, in the order of the attributes' names.
enum ImageField : int {
    kBitsPerSampleField = 0,
    kColorSpaceField = 1,
    kCopyrightField = 2,
    kDescriptionField = 3,
    kExifVersionField = 4,
    kHasAlphaField = 5,
    kKeywordsField = 6,
    kKindField = 7,
    kPixelHeightField = 8,
    kPixelWidthField = 9,
    kProfileNameField = 10
};

std::int32_t toInteger(const String& text) {
    return Variant(Val(text)).IntegerValue();
}

String label(Column column) {
    return kLabels[static_cast<std::size_t>(column)];
}

}  // namespace

// Turns one file into one row, in this very order: the row is on show from its first step, and a failure leaves it as
// far as it got. The row is looked up anew for each write, since the list may be sorted while a tool runs.
void Window1::checksize(const Ref<FolderItem>& item) {
    if (!item) return;
    Listbox1->AddRow(Array<String>{item->Name()});
    // Stopped in the middle, the search leaves no half row.
    const Thread::FinishFirst wholeRow([this] { Listbox1->RemoveRow(Listbox1->LastIndex()); });
    const auto row = [this] { return Listbox1->LastIndex(); };
    const auto show = [&](Column column, const String& text) { Listbox1->Cell(row(), column, text); };
    const auto tell = [&](Column column, const String& text) {
        Listbox1->CellHelpTag(row(), column, label(column) + text);
    };
    const auto tellUnlessEmpty = [&](Column column, const String& text) {
        if (!text.IsEmpty()) tell(column, text);
    };

    tell(kFilename, item->Name());
    const double compressedSize = static_cast<double>(item->Length()) / 1024.0 / 1024.0;
    const String checkMark = Encodings::UTF8.Chr(10003);

    const Array<String> fields = Split(GetAll(item->ShellPath()), Chr(0));
    const String depth = ImageFacts::DepthLabel(fields(kBitsPerSampleField));
    Listbox1->CellTag(row(), kColorSpaceTag, ImageFacts::WithoutNull(fields(kColorSpaceField)));
    Listbox1->CellTag(row(), kFileReferenceTag, item->GetSaveInfo(Nil, 0));
    const String copyright = ImageFacts::WithoutNull(fields(kCopyrightField));
    const String caption = ImageFacts::WithoutNull(fields(kDescriptionField));
    show(kCaption, caption);
    tellUnlessEmpty(kCaption, caption);
    const bool hasExif = !(fields(kExifVersionField) == "(null)");
    const String alpha = fields(kHasAlphaField) == "1" ? "+ Alpha" : "";
    const String keywords = ImageFacts::CleanKeywords(fields(kKeywordsField));
    const String& kind = fields(kKindField);
    const std::int32_t height = toInteger(fields(kPixelHeightField));
    const std::int32_t width = toInteger(fields(kPixelWidthField));

    const String orientation = ImageFacts::Orientation(width, height);
    show(kOrientation, orientation);
    tell(kOrientation, orientation);
    const double uncompressedSize = ImageFacts::UncompressedSize(width, height, depth == "16 bit");
    const String profile = ImageFacts::WithoutNull(fields(kProfileNameField));
    show(kProfile, profile);
    tellUnlessEmpty(kProfile, profile);

    const String dimensions = Str(width) + " x " + Str(height);
    show(kPixels, dimensions);
    tell(kPixels, dimensions + " pixels");
    const String size = Format(uncompressedSize, "###.00");
    show(kSize, size);
    tell(kSize, size + "MB");
    const String sizeOnDisk = Format(compressedSize, "###.00");
    show(kCompressedSize, sizeOnDisk);
    tell(kCompressedSize, sizeOnDisk + "MB");
    show(kCopyright, copyright);
    tellUnlessEmpty(kCopyright, copyright);
    show(kKeywords, Trim(keywords));
    if (!keywords.IsEmpty()) tell(kKeywords, Trim(keywords));
    const String fullKind = depth + " " + kind + alpha;
    show(kKind, fullKind);
    tell(kKind, fullKind);

    if (hasExif) {
        show(kExif, checkMark);
        const Array<String> cameraFields = Split(GetEXIF(item->ShellPath()), Chr(0));
        Listbox1->CellHelpTag(row(), kExif, ImageFacts::CameraText(cameraFields));
    }

    totalnumber->TextColor(Colors::kWhite);
    totalnumber->Text("Image Files: " + Str(Listbox1->ListCount()));
    selectRowTimer->Period(kPreviewDelay);
    selectRowTimer->Mode(Timer::ModeSingle);
}

}  // namespace marrowbeck
