// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "framework/core/core.h"

namespace marrowbeck {

/// The derivations by which fields of the metadata tool's answers become the texts of a row. Pure functions.
namespace ImageFacts {

/// `value` without its first "(null)", the tool's word for a missing one.
String WithoutNull(const String& value);

/// "8 bit" for 32, "16 bit" for 64, and nothing for any other depth.
String DepthLabel(const String& bitsPerSample);

/// The keywords of the tool's list form, joined by commas with no blanks: "(" and ")", pairs of blanks and line ends
/// go, also those inside a keyword.
String CleanKeywords(const String& list);

/// "Landscape", "Portrait" or "Square".
String Orientation(std::int32_t width, std::int32_t height);

/// The size in memory in units of 1024 times 1024 bytes: three channels of 8 bits, doubled for 16 bits. The byte count
/// is reckoned in 32 bits and wraps around.
double UncompressedSize(std::int32_t width, std::int32_t height, bool sixteenBit);

/// The camera data as five lines: maker and model, ISO speed, aperture, exposure, focal length. A missing value leaves
/// its line empty. Raises OutOfBoundsException when the tool's answer has fewer than six fields.
String CameraText(const Array<String>& fields);

}  // namespace ImageFacts
}  // namespace marrowbeck
