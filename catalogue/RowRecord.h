// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>

namespace marrowbeck {

/// The row of the result list, which is the only record of an image: what stands in which column, under which heading,
/// and behind which words in the help tag that also makes the line of the information panel.
namespace RowRecord {

enum Column : int {
    kFilename = 0,
    kSize = 1,
    kCompressedSize = 2,
    kPixels = 3,
    kProfile = 4,
    kCopyright = 5,
    kKeywords = 6,
    kKind = 7,
    kExif = 8,
    kOrientation = 9,
    kCaption = 10,
    kColumnCount = 11
};

/// Columns whose tag holds a value that the list does not show.
enum Tag : int { kColorSpaceTag = 0, kFileReferenceTag = 1 };

/// The blank behind "Pixels" and the word "Format" over the orientation are what users know.
inline constexpr std::array<const char*, kColumnCount> kHeadings = {
    "Filename", "Size(MB)", "Comp. Size(MB)", "Pixels ", "Tagged Profile", "Copyright",
    "Keywords", "Kind",     "EXIF",           "Format",  "Caption"};

/// What a help tag begins with. The EXIF column's help tag is the camera data alone.
inline constexpr std::array<const char*, kColumnCount> kLabels = {"Name: ",
                                                                  "Image size: ",
                                                                  "Compressed file size: ",
                                                                  "Image dimensions: ",
                                                                  "Color Profile: ",
                                                                  "Copyright: ",
                                                                  "Keywords: ",
                                                                  "Kind: ",
                                                                  "",
                                                                  "Orientation: ",
                                                                  "Caption: "};

}  // namespace RowRecord
}  // namespace marrowbeck
