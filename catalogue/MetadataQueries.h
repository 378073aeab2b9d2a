// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

/// The questions to the metadata tool, each to be followed by an escaped path.
namespace marrowbeck::MetadataQueries {

inline constexpr const char* kAll =
    "mdls -name kMDItemColorSpace -name kMDItemPixelWidth -name kMDItemPixelHeight -name kMDItemProfileName "
    "-name kMDItemCopyright -name kMDItemKind -name kMDItemKeywords -name kMDItemBitsPerSample "
    "-name kMDItemEXIFVersion -name kMDItemHasAlphaChannel -name kMDItemDescription -raw ";

inline constexpr const char* kCamera =
    "mdls -name kMDItemExposureTimeSeconds -name kMDItemFNumber -name kMDItemFocalLength -name kMDItemISOSpeed "
    "-name kMDItemAcquisitionMake -name kMDItemAcquisitionModel -raw ";

}  // namespace marrowbeck::MetadataQueries
