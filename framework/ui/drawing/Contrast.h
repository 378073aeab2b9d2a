// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

#include "framework/core/objects/Color.h"

namespace framework::internal {

/// The ratio of contrast of two colours, from 1 (none) to 21 (black and white), as WCAG 2.1 defines it.
double ContrastRatio(Color one, Color other);

/// Below this ratio a text is hard to read for many people: WCAG's bound for large texts and for parts of controls.
inline constexpr double kReadableContrast = 3.0;

/// The colour of a plate to be laid behind text of colour `text` so that it can be read on `background`; none when it
/// can be read as it is.
std::optional<Color> PlateBehind(Color text, Color background);

/// Whether white reads better than black on `background`.
bool IsDark(Color background);

}  // namespace framework::internal
