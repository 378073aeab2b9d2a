// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace framework {
namespace {

/// The number of decimals that the exact value of a double has: as many as it has binary places behind the point.
int exactDecimals(double number) {
    constexpr int kMantissaBits = 53;
    int exponent = 0;
    const double mantissa = std::ldexp(std::frexp(number, &exponent), kMantissaBits);
    return std::max(0, kMantissaBits - exponent - std::countr_zero(static_cast<std::uint64_t>(mantissa)));
}

}  // namespace

Decimal::Decimal(double number) {
    // The smallest double takes 1,076 characters.
    std::array<char, 1100> text;
    char* const end =
        std::to_chars(text.begin(), text.end(), number, std::chars_format::fixed, exactDecimals(number)).ptr;
    char* const point = std::find(text.begin(), end, '.');
    digits_.assign(text.begin(), point);
    if (point != end) digits_.append(point + 1, end);
    const std::size_t zeros = std::min(digits_.find_first_not_of('0'), digits_.size());
    digits_.erase(0, zeros);
    point_ = static_cast<int>(point - text.begin()) - static_cast<int>(zeros);
}

void Decimal::Keep(int count) {
    if (count >= static_cast<int>(digits_.size())) return;
    const bool up = count >= 0 && digits_[static_cast<std::size_t>(count)] >= '5';
    digits_.resize(static_cast<std::size_t>(std::max(count, 0)));
    if (!up) return;
    while (!digits_.empty() && digits_.back() == '9') digits_.pop_back();
    if (digits_.empty()) {
        digits_ = "1";
        ++point_;
    } else {
        ++digits_.back();
    }
}

std::string Decimal::IntegerDigits() const {
    if (IsZero() || point_ <= 0) return {};
    std::string digits = digits_;
    digits.resize(static_cast<std::size_t>(point_), '0');
    return digits;
}

std::string Decimal::DecimalDigits() const {
    if (point_ >= static_cast<int>(digits_.size())) return {};
    std::string digits = point_ < 0 ? std::string(static_cast<std::size_t>(-point_), '0') + digits_
                                    : digits_.substr(static_cast<std::size_t>(point_));
    digits.resize(digits.find_last_not_of('0') + 1);
    return digits;
}

}  // namespace framework
