// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// The bytes of a PNG of `pixels`, which must have as many bytes as its numbers say. Empty when that fails.
std::string pngOf(const Pixels& pixels);

}  // namespace marrowbeck::tools
