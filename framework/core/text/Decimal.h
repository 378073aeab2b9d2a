// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

namespace framework {

/// A number of no sign by its decimal digits: 0.d1d2d3... times ten to the power `Point`. Zero has no digits.
class Decimal {
  public:
    /// The exact value of a finite double that is not negative.
    explicit Decimal(double number);

    bool IsZero() const { return digits_.empty(); }
    /// The power of ten of the digit in front of the first one: 1 for a number from 1 up to 10, 0 for one from 0.1.
    int Point() const { return point_; }
    void SetPoint(int point) { point_ = point; }

    /// Keeps the first `count` digits, none when it is negative; the last one kept is rounded, away from zero when half
    /// of its unit is cut off.
    void Keep(int count);

    /// The digits before the point, without leading zeros: empty below 1.
    std::string IntegerDigits() const;
    /// The digits behind the point, without zeros at the end.
    std::string DecimalDigits() const;

  private:
    std::string digits_;
    int point_ = 0;
};

}  // namespace framework
