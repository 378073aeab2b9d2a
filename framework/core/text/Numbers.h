// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <concepts>
#include <cstdint>
#include <type_traits>

#include "framework/core/text/String.h"

/// Between numbers and texts. No locale has a say in any of it: the decimal point is a point.
namespace framework {

/// The shortest text from which Val reads the same number. From 0.000001 up to 10^16 without an exponent, and a whole
/// number without a point. What is no finite number gives "inf", "-inf" or "nan".
String Str(double number);

/// A whole number in decimal digits.
String StrOfInt64(std::int64_t number);
String StrOfUInt64(std::uint64_t number);
template <std::integral T>
requires(!std::is_same_v<T, bool>) String Str(T number) {
    if constexpr (std::is_signed_v<T>) return StrOfInt64(number);
    return StrOfUInt64(static_cast<std::uint64_t>(number));
}

/// The bits of a whole number in capital hexadecimal digits, without leading zeros.
String HexOfUInt64(std::uint64_t number);
template <std::integral T>
requires(!std::is_same_v<T, bool>) String Hex(T number) {
    return HexOfUInt64(static_cast<std::make_unsigned_t<T>>(number));
}

/// The number that the text begins with, behind white space: a sign, digits, a point, an exponent, or whole numbers in
/// hexadecimal, octal and binary behind "&h", "&o" and "&b". Reads up to the first character that fits no more; 0 when
/// there is no number. What is too big for a double gives infinity.
double Val(const String& text);
/// The same as Val.
double CDbl(const String& text);

/// The number cut towards zero. Beyond 32 bits the nearest end of the range; 0 for what is no number.
std::int32_t ToInteger(double number);

/// The smaller of two numbers.
inline double Min(double a, double b) {
    return b < a ? b : a;
}

}  // namespace framework
