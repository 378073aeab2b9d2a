// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

/// Operations on the bits of unsigned 64-bit numbers.
namespace framework::Bitwise {

constexpr std::uint64_t BitAnd(std::uint64_t a, std::uint64_t b) {
    return a & b;
}

constexpr std::uint64_t BitOr(std::uint64_t a, std::uint64_t b) {
    return a | b;
}

constexpr std::uint64_t OnesComplement(std::uint64_t number) {
    return ~number;
}

}  // namespace framework::Bitwise
