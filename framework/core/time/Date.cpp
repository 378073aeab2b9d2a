// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/time/Date.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string_view>

#include "framework/core/text/Text.h"

namespace framework {
namespace {

/// Takes figures and signs off the front of a text, as long as they are the ones expected.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    bool Take(std::string_view accepted) {
        if (rest_.empty() || accepted.find(rest_.front()) == std::string_view::npos) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// A number of exactly `count` digits, at most `most`.
    bool TakeNumber(std::size_t count, int most, int& number) {
        if (rest_.size() < count) return false;
        number = 0;
        for (const char byte : rest_.substr(0, count)) {
            if (byte < '0' || byte > '9') return false;
            number = number * 10 + (byte - '0');
        }
        rest_.remove_prefix(count);
        return number <= most;
    }

  private:
    std::string_view rest_;
};

bool isDay(int year, int month, int day) {
    using namespace std::chrono;
    return year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                          std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

}  // namespace

Date::Date() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    year_ = local.tm_year + 1900;
    month_ = local.tm_mon + 1;
    day_ = local.tm_mday;
    hour_ = local.tm_hour;
    minute_ = local.tm_min;
    // A leap second has no place in the form with two digits up to 59.
    second_ = std::min(local.tm_sec, 59);
}

String Date::SQLDateTime() const {
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", year_, month_, day_, hour_, minute_, second_);
    return text;
}

void Date::SQLDateTime(const String& text) {
    const String trimmed = Trim(text);
    Reader reader(trimmed.Bytes());
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!reader.TakeNumber(4, 9999, year) || !reader.Take("-") || !reader.TakeNumber(2, 12, month) ||
        !reader.Take("-") || !reader.TakeNumber(2, 31, day) || !isDay(year, month, day)) {
        return;
    }
    if (!reader.AtEnd()) {
        if (!reader.Take("Tt ") || !reader.TakeNumber(2, 23, hour) || !reader.Take(":") ||
            !reader.TakeNumber(2, 59, minute) || !reader.Take(":") || !reader.TakeNumber(2, 59, second)) {
            return;
        }
        reader.Take("Zz");
        if (!reader.AtEnd()) return;
    }
    year_ = year;
    month_ = month;
    day_ = day;
    hour_ = hour;
    minute_ = minute;
    second_ = second;
}

}  // namespace framework
