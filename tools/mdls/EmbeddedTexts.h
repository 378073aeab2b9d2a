// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

#include "tools/pictures/Exiv2Image.h"

namespace marrowbeck::tools {

/// What people have written about a picture, as tidy UTF-8; empty for none.
/// XMP goes before IPTC, and IPTC before Exif.
std::string captionOf(const Exiv2::Image& image);
std::string copyrightOf(const Exiv2::Image& image);

/// The keywords of XMP and those of IPTC, each once, in that order; those in
/// Exif's Windows tag where there are no others.
std::vector<std::string> keywordsOf(const Exiv2::Image& image);

/// An Exif text as tidy UTF-8. `key` is one such as "Exif.Image.Make".
std::string exifText(const Exiv2::ExifData& data, const char* key);

}  // namespace marrowbeck::tools
