// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "framework/core/text/TextEncoding.h"

namespace framework {

/// What is added to a byte that belongs to no valid sequence to make up its code: a value that no valid text holds, so
/// that such bytes equal themselves and nothing else.
inline constexpr std::uint32_t kStrayByte = 0xDC00;

/// One character as it stands in a text.
struct Character {
    /// The Unicode code point; for a byte that belongs to no valid sequence kStrayByte plus the byte.
    std::uint32_t code;
    /// The number of bytes that it takes up, at least 1.
    std::size_t size;
};

/// Reads the character at the start of `bytes`, which is not empty. Never fails.
Character ReadCharacter(std::string_view bytes, TextEncoding encoding);

/// The number of characters in `bytes`.
std::size_t CountCharacters(std::string_view bytes, TextEncoding encoding);

/// Appends the character `code` in `encoding`; what the encoding cannot hold becomes a question mark. A code as
/// ReadCharacter gives it for a stray byte is written as that byte.
void AppendCharacter(std::string& bytes, std::uint32_t code, TextEncoding encoding);

/// The encoding in which bytes are read for a comparison: those of no label as the UTF-8 that they most likely are.
constexpr TextEncoding ComparedAs(TextEncoding encoding) {
    return encoding == Encodings::Undefined ? Encodings::UTF8 : encoding;
}

/// Unicode simple case folding of one code point.
std::uint32_t FoldCase(std::uint32_t code);

/// The small and the capital letter of a code point by Unicode's simple mappings; the code itself when there is none.
std::uint32_t LowerCase(std::uint32_t code);
std::uint32_t UpperCase(std::uint32_t code);

/// Whether the code point is white space by Unicode: blank, tab, line ends, the no-break space and their like.
bool IsSpace(std::uint32_t code);

/// ASCII lower case of one byte; other bytes as they are.
inline char FoldAscii(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

/// Whether no byte is above 127.
bool IsAscii(std::string_view bytes);

}  // namespace framework
