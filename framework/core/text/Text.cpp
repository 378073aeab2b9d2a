// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Text.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "framework/core/text/Characters.h"
#include "framework/core/text/TextSearch.h"

namespace framework {
namespace {

int toCount(std::size_t number) {
    return static_cast<int>(std::min<std::size_t>(number, std::numeric_limits<int>::max()));
}

std::size_t toSize(int number) {
    return static_cast<std::size_t>(std::max(number, 0));
}

/// The index from 0 of a position from 1.
std::size_t toIndex(int position) {
    return static_cast<std::size_t>(std::max(position, 1) - 1);
}

/// Puts `replacement` in the place of up to `limit` occurrences.
String replaced(const String& text, const String& old, const String& replacement, std::size_t limit) {
    if (text.IsEmpty() || old.IsEmpty()) return text;
    const bool joinable = text.Encoding() == Encodings::Undefined || replacement.Encoding() == Encodings::Undefined;
    const String inserted = joinable ? replacement : replacement.Converted(text.Encoding());
    const std::string_view bytes = text.Bytes();
    TextSearch search(text, old);
    std::string result;
    std::size_t copied = 0;
    for (; limit > 0; --limit) {
        const auto match = search.Next(copied);
        if (!match) break;
        result.append(bytes, copied, match->offset - copied);
        result.append(inserted.Bytes());
        copied = match->End();
    }
    if (copied == 0) return text;
    result.append(bytes, copied);
    return String(result, text.Encoding());
}

/// Where the text without its trailing white space ends.
std::size_t endWithoutSpace(const String& text) {
    const std::string_view bytes = text.Bytes();
    std::size_t end = 0;
    for (std::size_t offset = 0; offset < bytes.size();) {
        const Character character = ReadCharacter(bytes.substr(offset), text.Encoding());
        offset += character.size;
        if (!IsSpace(character.code)) end = offset;
    }
    return end;
}

std::size_t beginWithoutSpace(const String& text) {
    const std::string_view bytes = text.Bytes();
    std::size_t offset = 0;
    while (offset < bytes.size()) {
        const Character character = ReadCharacter(bytes.substr(offset), text.Encoding());
        if (!IsSpace(character.code)) break;
        offset += character.size;
    }
    return offset;
}

/// The text with each code point replaced by what `map` says, but where its encoding cannot hold that.
template <class Map>
String mapped(const String& text, Map map) {
    std::string result;
    result.reserve(text.ByteCount());
    for (std::string_view rest = text.Bytes(); !rest.empty();) {
        const Character character = ReadCharacter(rest, text.Encoding());
        const std::string_view old = rest.substr(0, character.size);
        rest.remove_prefix(character.size);
        const std::uint32_t code = map(character.code);
        const std::size_t size = result.size();
        if (code != character.code) AppendCharacter(result, code, text.Encoding());
        if (code == character.code || result.compare(size, std::string::npos, "?") == 0) {
            result.resize(size);
            result.append(old);
        }
    }
    return result == text.Bytes() ? text : String(result, text.Encoding());
}

}  // namespace

int Len(const String& text) {
    return toCount(text.Length());
}

int LenB(const String& text) {
    return toCount(text.ByteCount());
}

String Left(const String& text, int count) {
    return text.Slice(0, text.OffsetOf(toSize(count)));
}

String Right(const String& text, int count) {
    const std::size_t length = text.Length();
    const std::size_t wanted = toSize(count);
    return wanted >= length ? text : text.Slice(text.OffsetOf(length - wanted));
}

String Mid(const String& text, int start) {
    return text.Slice(text.OffsetOf(toIndex(start)));
}

String Mid(const String& text, int start, int length) {
    const std::size_t first = toIndex(start);
    const std::size_t begin = text.OffsetOf(first);
    return text.Slice(begin, text.OffsetOf(first + toSize(length)) - begin);
}

int InStr(int start, const String& text, const String& find) {
    const std::size_t begin = text.OffsetOf(toIndex(start));
    if (begin >= text.ByteCount()) return 0;
    if (find.IsEmpty()) return std::max(start, 1);
    const auto match = TextSearch(text, find).Next(begin);
    return match ? toCount(text.CharactersBefore(match->offset) + 1) : 0;
}

int InStr(const String& text, const String& find) {
    return InStr(1, text, find);
}

int InStrB(int start, const String& text, const String& find) {
    const std::size_t begin = toIndex(start);
    if (begin >= text.ByteCount()) return 0;
    const std::size_t offset = text.Bytes().find(find.Bytes(), begin);
    return offset == std::string_view::npos ? 0 : toCount(offset + 1);
}

String Replace(const String& text, const String& old, const String& replacement) {
    return replaced(text, old, replacement, 1);
}

String ReplaceAll(const String& text, const String& old, const String& replacement) {
    return replaced(text, old, replacement, std::numeric_limits<std::size_t>::max());
}

String Trim(const String& text) {
    return LTrim(RTrim(text));
}

String LTrim(const String& text) {
    return text.Slice(beginWithoutSpace(text));
}

String RTrim(const String& text) {
    return text.Slice(0, endWithoutSpace(text));
}

String Lowercase(const String& text) {
    return mapped(text, LowerCase);
}

String Uppercase(const String& text) {
    return mapped(text, UpperCase);
}

String Chr(int code) {
    return Encodings::UTF8.Chr(static_cast<std::uint32_t>(code));
}

int Asc(const String& text) {
    if (text.IsEmpty()) return 0;
    const std::uint32_t code = ReadCharacter(text.Bytes(), text.Encoding()).code;
    const bool stray = code >= kStrayByte + 0x80 && code <= kStrayByte + 0xFF;
    return static_cast<int>(stray ? code - kStrayByte : code);
}

String DefineEncoding(const String& text, TextEncoding encoding) {
    return text.Labelled(encoding);
}

String ConvertEncoding(const String& text, TextEncoding encoding) {
    return text.Converted(encoding);
}

}  // namespace framework
