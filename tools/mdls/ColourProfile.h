// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// What an embedded colour profile says of itself.
struct ColourProfile {
    std::string name;  ///< UTF-8; empty for none
    ColourModel colour = ColourModel::unknown;
};

/// Reads an ICC profile (ISO 15076-1). One that makes no sense gives an empty description.
ColourProfile describeProfile(std::span<const std::uint8_t> icc);

}  // namespace marrowbeck::tools
