// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck::Colors {

inline constexpr Color kWhite = RGB(255, 255, 255);
inline constexpr Color kBlack = RGB(0, 0, 0);
/// States of the search that are no result.
inline constexpr Color kRed = RGB(255, 0, 0);
/// A filter is on.
inline constexpr Color kDarkRed = RGB(200, 0, 0);
/// The version line.
inline constexpr Color kGrey = RGB(153, 153, 153);
/// The text areas of the main window.
inline constexpr Color kPanel = RGB(179, 179, 179);
/// The main window: dark enough for white labels.
inline constexpr Color kWindow = RGB(35, 39, 46);

}  // namespace marrowbeck::Colors
