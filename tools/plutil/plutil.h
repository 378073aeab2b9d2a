// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// `plutil -convert xml1|binary1 [-o -] [--] FILE`: brings a property list, in either
/// form, into the one asked for, in its own place, or with `-o -` on standard output.
///
/// The new file is written beside the old one and renamed over it. On failure
/// the file stays as it was. A process of its own reads it, confined as those that read pictures. What is larger than
/// `largestFile`, or breaks the limits of `checkPropertyList`, is refused.
ToolResult plutil(const Arguments& arguments);

/// Bytes of a file that is still converted.
inline constexpr unsigned long long largestFile = 256ULL << 20;

}  // namespace marrowbeck::tools
