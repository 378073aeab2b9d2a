// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/Contrast.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace framework::internal {
namespace {

constexpr Color kWhite{255, 255, 255};
constexpr Color kBlack{0, 0, 0};
/// Soft ends of the scale: a plate is to look like a part of the window, not like a hole in it.
constexpr Color kLightPlate{222, 226, 231};
constexpr Color kDarkPlate{27, 30, 35};

double linearPart(std::uint8_t part) {
    const double value = part / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double relativeLuminance(Color color) {
    return 0.2126 * linearPart(color.Red) + 0.7152 * linearPart(color.Green) + 0.0722 * linearPart(color.Blue);
}

}  // namespace

double ContrastRatio(Color one, Color other) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::optional<Color> PlateBehind(Color text, Color background) {
    if (ContrastRatio(text, background) >= kReadableContrast) return std::nullopt;
    return ContrastRatio(text, kLightPlate) >= ContrastRatio(text, kDarkPlate) ? kLightPlate : kDarkPlate;
}

bool IsDark(Color background) {
    return ContrastRatio(kWhite, background) > ContrastRatio(kBlack, background);
}

}  // namespace framework::internal
