// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Characters.h"

#include <QChar>
#include <array>
#include <cstring>

#include "base/Utf8.h"

namespace framework {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

/// What bytes 0x80 to 0x9F mean in Windows code page 1252; the five unused ones keep their value.
constexpr std::array<std::uint16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::uint8_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

bool isSurrogate(std::uint32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}

Character readUtf8(std::string_view bytes) {
    if (byteAt(bytes, 0) < 0x80) return {byteAt(bytes, 0), 1};
    const base::Utf8Character character = base::utf8Character(bytes);
    return character.size > 0 ? Character{character.code, character.size} : Character{kStrayByte + byteAt(bytes, 0), 1};
}

std::uint32_t unitAt(std::string_view bytes, std::size_t offset) {
    std::uint16_t unit = 0;
    std::memcpy(&unit, bytes.data() + offset, sizeof unit);
    return unit;
}

Character readUtf16(std::string_view bytes) {
    if (bytes.size() < 2) return {kStrayByte + byteAt(bytes, 0), 1};
    const std::uint32_t unit = unitAt(bytes, 0);
    if (unit < 0xD800 || unit > 0xDBFF || bytes.size() < 4) return {unit, 2};
    const std::uint32_t low = unitAt(bytes, 2);
    if (low < 0xDC00 || low > 0xDFFF) return {unit, 2};
    return {0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), 4};
}

void appendUnit(std::string& bytes, std::uint32_t unit) {
    const auto narrow = static_cast<std::uint16_t>(unit);
    char raw[2];
    std::memcpy(raw, &narrow, sizeof narrow);
    bytes.append(raw, sizeof raw);
}

void appendUtf16(std::string& bytes, std::uint32_t code) {
    if (code < 0x10000) {
        appendUnit(bytes, code);
        return;
    }
    appendUnit(bytes, 0xD800 + ((code - 0x10000) >> 10));
    appendUnit(bytes, 0xDC00 + ((code - 0x10000) & 0x3FF));
}

void appendUtf8(std::string& bytes, std::uint32_t code) {
    // Half of a UTF-16 pair has no UTF-8 form.
    if (isSurrogate(code)) code = kReplacement;
    const auto put = [&bytes](std::uint32_t value) { bytes.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

void appendWindowsLatin1(std::string& bytes, std::uint32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
        bytes.push_back(static_cast<char>(code));
        return;
    }
    for (std::size_t i = 0; i < kWindows1252.size(); ++i) {
        if (kWindows1252[i] == code) {
            bytes.push_back(static_cast<char>(0x80 + i));
            return;
        }
    }
    bytes.push_back('?');
}

}  // namespace

Character ReadCharacter(std::string_view bytes, TextEncoding encoding) {
    switch (encoding.GetKind()) {
        case TextEncoding::Kind::Utf8:
            return readUtf8(bytes);
        case TextEncoding::Kind::Utf16:
            return readUtf16(bytes);
        case TextEncoding::Kind::WindowsLatin1: {
            const std::uint32_t byte = byteAt(bytes, 0);
            return {byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80U] : byte, 1};
        }
        case TextEncoding::Kind::Undefined:
            break;
    }
    const std::uint32_t byte = byteAt(bytes, 0);
    return {byte < 0x80 ? byte : kStrayByte + byte, 1};
}

std::size_t CountCharacters(std::string_view bytes, TextEncoding encoding) {
    if (encoding == Encodings::Undefined || encoding == Encodings::WindowsLatin1) return bytes.size();
    std::size_t count = 0;
    while (!bytes.empty()) {
        bytes.remove_prefix(ReadCharacter(bytes, encoding).size);
        ++count;
    }
    return count;
}

void AppendCharacter(std::string& bytes, std::uint32_t code, TextEncoding encoding) {
    if (code >= kStrayByte + 0x80 && code <= kStrayByte + 0xFF && encoding != Encodings::UTF16) {
        bytes.push_back(static_cast<char>(code - kStrayByte));
        return;
    }
    switch (encoding.GetKind()) {
        case TextEncoding::Kind::Utf16:
            return appendUtf16(bytes, code);
        case TextEncoding::Kind::WindowsLatin1:
            return appendWindowsLatin1(bytes, code);
        case TextEncoding::Kind::Utf8:
        case TextEncoding::Kind::Undefined:
            return appendUtf8(bytes, code);
    }
}

std::uint32_t FoldCase(std::uint32_t code) {
    return code < 0x80 ? static_cast<std::uint32_t>(FoldAscii(static_cast<char>(code)))
                       : static_cast<std::uint32_t>(QChar::toCaseFolded(static_cast<char32_t>(code)));
}

std::uint32_t LowerCase(std::uint32_t code) {
    return static_cast<std::uint32_t>(QChar::toLower(static_cast<char32_t>(code)));
}

std::uint32_t UpperCase(std::uint32_t code) {
    return static_cast<std::uint32_t>(QChar::toUpper(static_cast<char32_t>(code)));
}

bool IsSpace(std::uint32_t code) {
    return QChar::isSpace(static_cast<char32_t>(code));
}

bool IsAscii(std::string_view bytes) {
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= bytes.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, sizeof word);
        if ((word & 0x8080808080808080ULL) != 0) return false;
    }
    for (; i < bytes.size(); ++i) {
        if (byteAt(bytes, i) >= 0x80) return false;
    }
    return true;
}

}  // namespace framework
