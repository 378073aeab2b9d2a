// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Exiv2 0.27 (Debian 12) and 0.28 (Debian 13 and later) differ in types and in names: here is all that does, once.
#include <cstddef>
#include <cstdint>
#include <exiv2/exiv2.hpp>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools::exiv2 {

#if EXIV2_TEST_VERSION(0, 28, 0)

/// What the library counts the bytes of a content in.
using Size = std::size_t;

/// RIFF, Matroska, QuickTime or ASF.
inline bool isVideo(const Exiv2::Image& image) {
    const Exiv2::ImageType type = image.imageType();
    return type == Exiv2::ImageType::riff || type == Exiv2::ImageType::mkv || type == Exiv2::ImageType::qtime ||
           type == Exiv2::ImageType::asf;
}

/// The colour profile (ISO 15076-1) that the image holds, empty without one.
inline Content profileOf(Exiv2::Image& image) {
    if (!image.iccProfileDefined()) return {};
    const Exiv2::DataBuf& profile = image.iccProfile();
    return {profile.c_data(), profile.size()};
}

inline std::int64_t numberOf(const Exiv2::Exifdatum& datum) {
    return datum.toInt64();
}

/// Formats on the ground of ISO 14496-12 (HEIF, AVIF, CR3) are read always.
inline void enableBoxFormats() {}

#else

using Size = long;

/// By the library's own numbers, whose headers cannot be included.
inline bool isVideo(const Exiv2::Image& image) {
    const int type = image.imageType();
    return (type >= 20 && type <= 22) || type == 24;
}

inline Content profileOf(Exiv2::Image& image) {
    if (!image.iccProfileDefined()) return {};
    const Exiv2::DataBuf& profile = *image.iccProfile();
    return {profile.pData_, static_cast<std::size_t>(profile.size_)};
}

inline std::int64_t numberOf(const Exiv2::Exifdatum& datum) {
    return datum.toLong();
}

inline void enableBoxFormats() {
    Exiv2::enableBMFF(true);
}

#endif

}  // namespace marrowbeck::tools::exiv2
