// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace framework {

/// A colour by its three parts, each from 0 to 255.
struct Color {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    constexpr bool operator==(const Color&) const = default;
};

/// The colour of the three parts; a part outside 0 to 255 is brought to the nearer end.
constexpr Color RGB(int red, int green, int blue) {
    const auto part = [](int value) { return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); };
    return {part(red), part(green), part(blue)};
}

}  // namespace framework
