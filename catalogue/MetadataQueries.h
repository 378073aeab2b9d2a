// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

/// The questions to the search and metadata tools.
namespace marrowbeck::MetadataQueries {

/// The files of a folder and of all folders in it: to be followed by an escaped path and by one of the terms below it.
/// The terms' words stay outside any quotes.
inline constexpr const char* kFilesIn = "mdfind -0 -onlyin ";
/// The same for whom half an answer is none: with images that may not be read, and failing, for all that it prints,
/// with `kIncomplete` where anything could not be looked into.
inline constexpr const char* kEveryFileIn = "mdfind -0 -strict -onlyin ";
inline constexpr int kIncomplete = 1;
inline constexpr const char* kJpegTerm = " kMDItemContentType == public.jpeg";
inline constexpr const char* kTiffTerm = " kMDItemContentType == public.tiff";
inline constexpr const char* kPngTerm = " kMDItemContentType == public.png";
inline constexpr const char* kImageTerm = " kMDItemContentTypeTree == *image";

/// What the list shows of a file, and its camera data: each to be followed by an escaped path.
inline constexpr const char* kAll =
    "mdls -name kMDItemColorSpace -name kMDItemPixelWidth -name kMDItemPixelHeight -name kMDItemProfileName "
    "-name kMDItemCopyright -name kMDItemKind -name kMDItemKeywords -name kMDItemBitsPerSample "
    "-name kMDItemEXIFVersion -name kMDItemHasAlphaChannel -name kMDItemDescription -raw ";

inline constexpr const char* kCamera =
    "mdls -name kMDItemExposureTimeSeconds -name kMDItemFNumber -name kMDItemFocalLength -name kMDItemISOSpeed "
    "-name kMDItemAcquisitionMake -name kMDItemAcquisitionModel -raw ";

}  // namespace marrowbeck::MetadataQueries
