// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ImageRow.h"

#include <cstdint>

#include "catalogue/ImageFacts.h"

namespace marrowbeck {
namespace {

using namespace RowRecord;

/// Fields of the answer on an image, in the order of the attributes' names.
enum ImageField : int {
    kBitsPerSampleField,
    kColorSpaceField,
    kCopyrightField,
    kDescriptionField,
    kExifVersionField,
    kHasAlphaField,
    kKeywordsField,
    kKindField,
    kPixelHeightField,
    kPixelWidthField,
    kProfileNameField
};

std::int32_t toInteger(const String& text) {
    return Variant(Val(text)).IntegerValue();
}

}  // namespace

void ImageRow::Fill(const Ref<FolderItem>& item) {
    const auto tellUnlessEmpty = [this](Column column, const String& text) {
        if (!text.IsEmpty()) Tell(column, text);
    };

    Tell(kFilename, item->Name());
    const String checkMark = Encodings::UTF8.Chr(10003);

    const Array<String> fields = Split(Ask(item->ShellPath()), Chr(0));
    // The tool that just answered has told the length, too.
    const double compressedSize = static_cast<double>(item->Length()) / 1024.0 / 1024.0;
    const String depth = ImageFacts::DepthLabel(fields(kBitsPerSampleField));
    Keep(kColorSpaceTag, ImageFacts::WithoutNull(fields(kColorSpaceField)));
    Keep(kFileReferenceTag, item->GetSaveInfo(Nil, 0));
    const String copyright = ImageFacts::WithoutNull(fields(kCopyrightField));
    const String caption = ImageFacts::WithoutNull(fields(kDescriptionField));
    Show(kCaption, caption);
    tellUnlessEmpty(kCaption, caption);
    const bool hasExif = !(fields(kExifVersionField) == "(null)");
    const String alpha = fields(kHasAlphaField) == "1" ? "+ Alpha" : "";
    const String keywords = ImageFacts::CleanKeywords(fields(kKeywordsField));
    const String& kind = fields(kKindField);
    const std::int32_t height = toInteger(fields(kPixelHeightField));
    const std::int32_t width = toInteger(fields(kPixelWidthField));

    const String orientation = ImageFacts::Orientation(width, height);
    Show(kOrientation, orientation);
    Tell(kOrientation, orientation);
    const double uncompressedSize = ImageFacts::UncompressedSize(width, height, depth == "16 bit");
    const String profile = ImageFacts::WithoutNull(fields(kProfileNameField));
    Show(kProfile, profile);
    tellUnlessEmpty(kProfile, profile);

    const String dimensions = Str(width) + " x " + Str(height);
    Show(kPixels, dimensions);
    Tell(kPixels, dimensions + " pixels");
    const String size = Format(uncompressedSize, "###.00");
    Show(kSize, size);
    Tell(kSize, size + "MB");
    const String sizeOnDisk = Format(compressedSize, "###.00");
    Show(kCompressedSize, sizeOnDisk);
    Tell(kCompressedSize, sizeOnDisk + "MB");
    Show(kCopyright, copyright);
    tellUnlessEmpty(kCopyright, copyright);
    Show(kKeywords, Trim(keywords));
    if (!keywords.IsEmpty()) Tell(kKeywords, Trim(keywords));
    const String fullKind = depth + " " + kind + alpha;
    Show(kKind, fullKind);
    Tell(kKind, fullKind);

    if (hasExif) {
        Show(kExif, checkMark);
        TellCamera(item->ShellPath());
    }
}

}  // namespace marrowbeck
