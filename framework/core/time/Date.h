// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// A day and a time of day to the second, in the Gregorian calendar. It knows of no time zone: it is born with the
/// local time of the moment, and holds what it is given from there on.
class Date : public Object {
  public:
    /// The current moment.
    Date();

    /// "YYYY-MM-DD HH:MM:SS".
    String SQLDateTime() const;
    /// Takes that form, the form with a "T" between day and time and with a "Z" behind, and a day alone, which is
    /// midnight then; the "Z" converts nothing. Text that names no day of the calendar or no time leaves the date as it
    /// is.
    void SQLDateTime(const String& text);

    int Year() const { return year_; }
    /// 1 to 12.
    int Month() const { return month_; }
    /// 1 to 31.
    int Day() const { return day_; }
    int Hour() const { return hour_; }
    int Minute() const { return minute_; }
    int Second() const { return second_; }

  private:
    int year_;
    int month_;
    int day_;
    int hour_;
    int minute_;
    int second_;
};

}  // namespace framework
