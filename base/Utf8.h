// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace base {

/// A character of UTF-8 (RFC 3629).
struct Utf8Character {
    std::uint32_t code = 0;  ///< the Unicode code point
    std::size_t size = 0;    ///< the bytes that it takes; 0 where the bytes begin with none
};

/// The character at the beginning of `bytes`.
Utf8Character utf8Character(std::string_view bytes);

bool isUtf8(std::string_view bytes);

/// Whether a character is not for the eye but steers what shows it: a control character, C0 or C1 (ISO 6429), or one
/// that turns the direction of what stands beside it (UAX #9), by which a text can look like another one.
bool steers(std::uint32_t code);

/// As much of the beginning of a UTF-8 text as `size` bytes hold, without a piece of a character at its end.
std::string_view wholeCharacters(std::string_view text, std::size_t size);

}  // namespace base
