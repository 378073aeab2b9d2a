// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include "framework/core/text/Characters.h"

namespace framework {
namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// The value of a digit of up to 16, or 16 when it is none.
int digitValue(char byte) {
    const char folded = FoldAscii(byte);
    if (isDigit(folded)) return folded - '0';
    return folded >= 'a' && folded <= 'f' ? folded - 'a' + 10 : 16;
}

std::string_view withoutLeadingSpace(std::string_view bytes) {
    while (!bytes.empty()) {
        const Character character = ReadCharacter(bytes, Encodings::UTF8);
        if (!IsSpace(character.code)) break;
        bytes.remove_prefix(character.size);
    }
    return bytes;
}

/// The base that a prefix names, or 0 when `bytes` begins with no prefix.
int baseOf(std::string_view bytes) {
    if (bytes.size() < 2 || bytes[0] != '&') return 0;
    switch (FoldAscii(bytes[1])) {
        case 'h':
            return 16;
        case 'o':
            return 8;
        case 'b':
            return 2;
        default:
            return 0;
    }
}

double wholeNumber(std::string_view digits, int base) {
    double value = 0;
    for (const char byte : digits) {
        const int digit = digitValue(byte);
        if (digit >= base) break;
        value = value * base + digit;
    }
    return value;
}

/// What a number that no double can hold comes to: infinity, or zero when it is too small. It is told by the power of
/// ten of the first digit that is not zero.
double outOfRange(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, mark);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_of("123456789");
    double power = static_cast<double>(point) - static_cast<double>(first);
    if (mark != std::string_view::npos) {
        const bool negative = number[mark + 1] == '-';
        const std::size_t begin = mark + (negative || number[mark + 1] == '+' ? 2 : 1);
        const double exponent = wholeNumber(number.substr(begin), 10);
        power += negative ? -exponent : exponent;
    }
    return power > 0 ? std::numeric_limits<double>::infinity() : 0;
}

/// The decimal number without a sign at the start of `bytes`.
double decimalNumber(std::string_view bytes) {
    // The library would also read the words for infinity and for what is no number.
    if (bytes.empty() || !(isDigit(bytes[0]) || bytes[0] == '.')) return 0;
    double value = 0;
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    if (error == std::errc::result_out_of_range) {
        return outOfRange(bytes.substr(0, static_cast<std::size_t>(end - bytes.data())));
    }
    return value;
}

template <class... Format>
String written(Format... format) {
    char digits[64];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, format...);
    return String(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

}  // namespace

String Str(double number) {
    if (std::isnan(number)) return "nan";
    if (number == 0) return "0";
    const double size = std::fabs(number);
    if (size >= 1e-6 && size < 1e16) return written(number, std::chars_format::fixed);
    return written(number);
}

String StrOfInt64(std::int64_t number) {
    return written(number);
}

String StrOfUInt64(std::uint64_t number) {
    return written(number);
}

String HexOfUInt64(std::uint64_t number) {
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEF"[number & 0xF]);
        number >>= 4;
    } while (number != 0);
    return String(digits);
}

double Val(const String& text) {
    const String readable = text.Converted(Encodings::UTF8);
    std::string_view bytes = withoutLeadingSpace(readable.Bytes());
    if (const int base = baseOf(bytes)) return wholeNumber(bytes.substr(2), base);
    const bool negative = !bytes.empty() && bytes[0] == '-';
    if (negative || (!bytes.empty() && bytes[0] == '+')) bytes.remove_prefix(1);
    const double value = decimalNumber(bytes);
    return negative ? -value : value;
}

double CDbl(const String& text) {
    return Val(text);
}

std::int32_t ToInteger(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(number)) return 0;
    if (number <= Limits::min()) return Limits::min();
    if (number >= Limits::max()) return Limits::max();
    return static_cast<std::int32_t>(number);
}

}  // namespace framework
