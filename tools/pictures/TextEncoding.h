// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace marrowbeck::tools {

/// `bytes` of the named character set (as iconv knows it) as UTF-8, with U+FFFD
/// for what the set does not hold. An unknown set leaves the bytes as they are.
std::string convertToUtf8(std::string_view bytes, const char* characterSet);

/// Bytes of an undeclared set as UTF-8: as they are if they are UTF-8, else read as Windows-1252.
std::string guessedToUtf8(std::string_view bytes);

/// Bytes of an IPTC dataset as UTF-8. `declared` is the dataset 1:90, an escape
/// sequence of ISO 2022; without one that is known, the bytes are guessed at.
std::string iptcToUtf8(std::string_view bytes, std::string_view declared);

/// The text with U+FFFD for bytes that are no UTF-8, without NUL bytes, without a byte-order mark at its beginning, and
/// without blanks and line ends at its beginning and end.
std::string tidied(std::string_view text);

}  // namespace marrowbeck::tools
