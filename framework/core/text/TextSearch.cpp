// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/TextSearch.h"

#include <algorithm>

#include "framework/core/text/Characters.h"

namespace framework {
namespace {

char capital(char small) {
    return small >= 'a' && small <= 'z' ? static_cast<char>(small - ('a' - 'A')) : small;
}

/// Whether `find` can be looked for byte by byte. In a text that is not all ASCII the letters k and s cannot: the
/// Kelvin sign and the long s fold to them.
bool canSearchBytes(const String& text, const String& find) {
    if (!find.IsAscii() || text.Encoding() == Encodings::UTF16) return false;
    return text.IsAscii() || find.Bytes().find_first_of("kKsS") == std::string_view::npos;
}

}  // namespace

TextSearch::TextSearch(const String& text, const String& find)
    : bytes_(text.Bytes()), encoding_(ComparedAs(text.Encoding())), byBytes_(canSearchBytes(text, find)) {
    if (byBytes_) {
        find_ = find.ToStd();
        std::transform(find_.begin(), find_.end(), find_.begin(), FoldAscii);
        return;
    }
    for (std::string_view rest = find.Bytes(); !rest.empty();) {
        const Character character = ReadCharacter(rest, ComparedAs(find.Encoding()));
        findCodes_.push_back(FoldCase(character.code));
        rest.remove_prefix(character.size);
    }
}

std::optional<TextSearch::Match> TextSearch::Next(std::size_t from) {
    return byBytes_ ? nextByBytes(from) : nextByCharacters(from);
}

/// Each of the two places moves on only when it has been passed, so that a rare letter is not looked for again and
/// again.
std::size_t TextSearch::nextFirstByte(std::size_t from) {
    const char small = find_[0];
    if (nextSmall_ != std::string_view::npos && nextSmall_ <= from) nextSmall_ = bytes_.find(small, from);
    if (capital(small) == small) return nextSmall_;
    if (nextCapital_ != std::string_view::npos && nextCapital_ <= from) {
        nextCapital_ = bytes_.find(capital(small), from);
    }
    return std::min(nextSmall_, nextCapital_);
}

std::optional<TextSearch::Match> TextSearch::nextByBytes(std::size_t from) {
    while (true) {
        const std::size_t offset = nextFirstByte(from);
        if (offset == std::string_view::npos || bytes_.size() - offset < find_.size()) return std::nullopt;
        const auto* begin = bytes_.data() + offset;
        if (std::equal(find_.begin(), find_.end(), begin, [](char a, char b) { return a == FoldAscii(b); })) {
            return Match{offset, find_.size()};
        }
        from = offset + 1;
    }
}

/// The size of the match at `offset`, if there is one.
std::optional<std::size_t> TextSearch::matchAt(std::size_t offset) const {
    std::string_view rest = bytes_.substr(offset);
    for (const std::uint32_t code : findCodes_) {
        if (rest.empty()) return std::nullopt;
        const Character character = ReadCharacter(rest, encoding_);
        if (FoldCase(character.code) != code) return std::nullopt;
        rest.remove_prefix(character.size);
    }
    return bytes_.size() - offset - rest.size();
}

std::optional<TextSearch::Match> TextSearch::nextByCharacters(std::size_t from) const {
    while (from < bytes_.size()) {
        if (const auto size = matchAt(from)) return Match{from, *size};
        from += ReadCharacter(bytes_.substr(from), encoding_).size;
    }
    return std::nullopt;
}

}  // namespace framework
