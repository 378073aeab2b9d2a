// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/TextEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>

#include "base/Utf8.h"

namespace marrowbeck::tools {

namespace {

// Windows-1252 is what software means that declares ISO 8859-1 or nothing.
constexpr const char* westernSet = "CP1252";

constexpr std::string_view replacement = "\xef\xbf\xbd";

struct EscapeSequence {
    char last;
    const char* characterSet;
};

// The sets with 96 characters of the ISO 2022 register, by the last byte of the sequence.
constexpr EscapeSequence escapeSequences[] = {
    {'A', westernSet},    {'B', "ISO-8859-2"},  {'C', "ISO-8859-3"},  {'D', "ISO-8859-4"},  {'F', "ISO-8859-7"},
    {'G', "ISO-8859-6"},  {'H', "ISO-8859-8"},  {'L', "ISO-8859-5"},  {'M', "ISO-8859-9"},  {'V', "ISO-8859-10"},
    {'T', "ISO-8859-11"}, {'Y', "ISO-8859-13"}, {'_', "ISO-8859-14"}, {'b', "ISO-8859-15"}, {'f', "ISO-8859-16"},
};

std::string withoutStrayBytes(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t size = base::utf8Character(text).size;
        if (size == 0) {
            result += replacement;
        } else {
            result += text.substr(0, size);
        }
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return result;
}

}  // namespace

std::string convertToUtf8(std::string_view bytes, const char* characterSet) {
    const iconv_t converter = iconv_open("UTF-8", characterSet);
    if (converter == reinterpret_cast<iconv_t>(-1))  // NOLINT(performance-no-int-to-ptr): how iconv says no
        return std::string(bytes);
    std::string input(bytes);
    char* next = input.data();
    size_t left = input.size();
    std::string output;
    while (left > 0) {
        char buffer[1024];
        char* end = buffer;
        size_t room = sizeof buffer;
        const size_t outcome = iconv(converter, &next, &left, &end, &room);
        const int failure = errno;
        output.append(buffer, end);
        if (outcome != static_cast<size_t>(-1)) break;
        if (failure == E2BIG) continue;
        output += replacement;
        ++next;
        --left;
    }
    iconv_close(converter);
    return output;
}

std::string guessedToUtf8(std::string_view bytes) {
    return base::isUtf8(bytes) ? std::string(bytes) : convertToUtf8(bytes, westernSet);
}

std::string iptcToUtf8(std::string_view bytes, std::string_view declared) {
    constexpr std::string_view utf8 = "\x1b%G";
    if (declared.size() >= 3 && declared[0] == '\x1b' && !declared.starts_with(utf8)) {
        for (const EscapeSequence& sequence : escapeSequences) {
            if (sequence.last == declared[2]) return convertToUtf8(bytes, sequence.characterSet);
        }
    }
    return guessedToUtf8(bytes);
}

std::string tidied(std::string_view text) {
    std::string result = base::isUtf8(text) ? std::string(text) : withoutStrayBytes(text);
    result.erase(std::remove(result.begin(), result.end(), '\0'), result.end());
    constexpr std::string_view mark = "\xef\xbb\xbf";
    if (result.starts_with(mark)) result.erase(0, mark.size());
    constexpr const char* blanks = " \t\r\n";
    const size_t last = result.find_last_not_of(blanks);
    result.erase(last == std::string::npos ? 0 : last + 1);
    result.erase(0, std::min(result.find_first_not_of(blanks), result.size()));
    return result;
}

}  // namespace marrowbeck::tools
