#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "framework/core/TextEncoding.h"

namespace framework {

/// One character as it stands in a text.
struct Character {
    /// The Unicode code point; for a byte that belongs to no valid sequence 0xDC00 plus the byte, a value that no valid
    /// text holds, so that such bytes equal themselves and nothing else.
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

/// Unicode simple case folding of one code point.
std::uint32_t FoldCase(std::uint32_t code);

/// ASCII lower case of one byte; other bytes as they are.
inline char FoldAscii(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

/// Whether no byte is above 127.
bool IsAscii(std::string_view bytes);

}  // namespace framework
