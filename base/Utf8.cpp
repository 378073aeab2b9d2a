// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/Utf8.h"

namespace base {
namespace {

std::uint8_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

bool continues(std::uint8_t byte) {
    return (byte & 0xC0U) == 0x80;
}

/// The length of a character by its first byte, and the least code point that needs this length.
struct Sequence {
    std::size_t size;
    std::uint32_t least;
    std::uint32_t firstBits;
};

Sequence sequenceOf(std::uint8_t lead) {
    if (lead < 0x80) return {1, 0, lead};
    if (lead >= 0xC2 && lead <= 0xDF) return {2, 0x80, lead & 0x1FU};
    if (lead >= 0xE0 && lead <= 0xEF) return {3, 0x800, lead & 0x0FU};
    if (lead >= 0xF0 && lead <= 0xF4) return {4, 0x10000, lead & 0x07U};
    return {0, 0, 0};
}

}  // namespace

Utf8Character utf8Character(std::string_view bytes) {
    if (bytes.empty()) return {};
    const Sequence sequence = sequenceOf(byteAt(bytes, 0));
    if (sequence.size == 0 || bytes.size() < sequence.size) return {};
    std::uint32_t code = sequence.firstBits;
    for (std::size_t i = 1; i < sequence.size; ++i) {
        if (!continues(byteAt(bytes, i))) return {};
        code = (code << 6U) | (byteAt(bytes, i) & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < sequence.least || code > 0x10FFFF || isSurrogate) return {};
    return {code, sequence.size};
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t size = utf8Character(bytes).size;
        if (size == 0) return false;
        bytes.remove_prefix(size);
    }
    return true;
}

bool steers(std::uint32_t code) {
    const auto isIn = [code](std::uint32_t first, std::uint32_t last) { return code >= first && code <= last; };
    return code < 0x20 || isIn(0x7F, 0x9F) || isIn(0x202A, 0x202E) || isIn(0x2066, 0x2069);
}

std::string_view wholeCharacters(std::string_view text, std::size_t size) {
    if (text.size() <= size) return text;
    while (size > 0 && continues(byteAt(text, size))) --size;
    return text.substr(0, size);
}

}  // namespace base
