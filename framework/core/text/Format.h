// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// A number as text, in the shape of a mask:
///
/// | in the mask | in the text |
/// |---|---|
/// | `#` | a digit, if the number has one at that place |
/// | `0` | a digit, 0 where the number has none |
/// | `.` | the decimal point, if a digit follows |
/// | `,` among the digits before the point | groups of three digits, divided by commas |
/// | `-` | a minus sign, for a negative number |
/// | `+` | a plus or minus sign |
/// | `%` | a percent sign, and the number times 100 |
/// | `e` followed by `+`, `-` or neither and by digit places | the power of ten, with one digit before the point |
/// | `;` | divides the shapes for positive and negative numbers and for zero; the first stands in for an empty one |
/// | `\` | the next character as it is |
/// | others | themselves |
///
/// The number is rounded to the mask's decimals from the exact value of the double, and away from zero when it lies in
/// the middle between two: 2.25 under `#.#` gives "2.3", but 1.005 under `#.##` gives "1", being a little less than it
/// looks. More digits before the point than the mask has places are all printed. Without a sign in the mask the minus
/// of a negative number comes first; what was rounded to zero has none. A mask of `#` alone prints zero as "0". What is
/// no finite number gives "inf", "-inf" or "nan". CDbl reads back what masks without `,` and `%` give.
String Format(double number, const String& mask);

}  // namespace framework
