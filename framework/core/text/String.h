// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "framework/core/text/TextEncoding.h"

namespace framework {

/// An immutable text that is shared when copied. Holds any bytes, NUL among them, and a label that says how they are
/// encoded. Bytes that are not valid in that encoding stay as they are and count as one character each. The default is
/// the empty text; there is no Nil text. Whether a text is pure ASCII is known from its making, so that positions in
/// nearly all texts cost nothing to find. As with all objects of the framework, for the program's one thread only.
class String {
  public:
    String() noexcept = default;
    /// The text of a NUL-ended literal in UTF-8.
    String(const char* utf8);
    explicit String(std::string_view bytes, TextEncoding encoding = Encodings::UTF8);
    String(const String& other) noexcept;
    String(String&& other) noexcept;
    ~String();
    String& operator=(const String& other) noexcept;
    String& operator=(String&& other) noexcept;

    /// The bytes. The view lives as long as this text is neither changed nor destroyed.
    std::string_view Bytes() const noexcept;
    /// The bytes with a NUL behind them, for calls to the operating system.
    const char* CString() const noexcept;
    std::string ToStd() const { return std::string(Bytes()); }

    std::size_t ByteCount() const noexcept { return Bytes().size(); }
    bool IsEmpty() const noexcept { return rep_ == nullptr; }
    bool IsAscii() const noexcept;
    TextEncoding Encoding() const noexcept;
    /// Whether each character is one byte, so that positions in bytes and in characters are the same.
    bool IsSingleByte() const noexcept;

    /// The number of characters. Counted once, then remembered.
    std::size_t Length() const noexcept;
    /// The offset in bytes of the character with the index `character`, from 0; the byte count when there is none. Goes
    /// on from the place last asked for, so that a walk through a text takes linear time in all encodings.
    std::size_t OffsetOf(std::size_t character) const noexcept;
    /// The number of characters that begin before the byte at `offset`: the reverse of OffsetOf.
    std::size_t CharactersBefore(std::size_t offset) const noexcept;
    /// The text of `count` bytes from `offset` on, cut to what there is, in the same encoding.
    String Slice(std::size_t offset, std::size_t count = std::string_view::npos) const;
    /// The same bytes under another label.
    String Labelled(TextEncoding encoding) const;
    /// The same characters in another encoding. Bytes of no known encoding are read as UTF-8; what `encoding` cannot
    /// hold becomes a question mark. To the undefined encoding only the label changes.
    String Converted(TextEncoding encoding) const;

    /// Appends in place when nobody else holds this text, so that building a long one takes linear time. Two texts
    /// whose encodings cannot stand in one are joined as UTF-8; where that of one is not known, the bytes are joined
    /// and the label is the undefined one.
    String& operator+=(const String& other);
    friend String operator+(const String& left, const String& right);

    /// Equality and order ignore case, by Unicode's simple case folding.
    friend bool operator==(const String& left, const String& right) noexcept;
    friend std::weak_ordering operator<=>(const String& left, const String& right) noexcept;
    /// The same for texts that are equal.
    std::size_t Hash() const noexcept;

    /// Whether the bytes are the same, case and all.
    bool SameBytes(const String& other) const noexcept { return Bytes() == other.Bytes(); }

  private:
    struct Rep;

    static Rep* make(std::size_t size, std::size_t capacity);
    static void release(Rep* rep) noexcept;

    Rep* rep_ = nullptr;
};

}  // namespace framework
