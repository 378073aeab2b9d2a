// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace framework {

class String;

/// The encoding that a String's bytes are labelled with. A plain value; the undefined one says nothing of the bytes,
/// and each byte then counts as a character.
class TextEncoding {
  public:
    enum class Kind : std::uint8_t { Undefined, Utf8, Utf16, WindowsLatin1 };

    constexpr TextEncoding() = default;
    constexpr explicit TextEncoding(Kind kind) : kind_(kind) {}

    constexpr Kind GetKind() const { return kind_; }
    constexpr bool operator==(const TextEncoding&) const = default;

    /// The character with the Unicode code point `code`, in this encoding. A code that is no character gives U+FFFD.
    String Chr(std::uint32_t code) const;

  private:
    Kind kind_ = Kind::Undefined;
};

/// The encodings that have names. UTF-16 is in the machine's byte order, without a mark.
namespace Encodings {
inline constexpr TextEncoding Undefined{};
inline constexpr TextEncoding UTF8{TextEncoding::Kind::Utf8};
inline constexpr TextEncoding UTF16{TextEncoding::Kind::Utf16};
inline constexpr TextEncoding WindowsLatin1{TextEncoding::Kind::WindowsLatin1};
inline constexpr TextEncoding SystemDefault = UTF8;
}  // namespace Encodings

}  // namespace framework
