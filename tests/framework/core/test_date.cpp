// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/time/Date.h"

#include <gtest/gtest.h>

#include <ctime>

#include "framework/core/objects/Ref.h"

using namespace framework;

namespace {

/// What a date that held a certain moment says after `text` was given to it.
std::string after(const String& text) {
    const Ref<Date> date = New<Date>();
    date->SQLDateTime("2001-02-03 04:05:06");
    date->SQLDateTime(text);
    return date->SQLDateTime().ToStd();
}

}  // namespace

TEST(Date, isBornWithTheLocalTime) {
    setenv("TZ", "XYZ-5:30", 1);
    const auto now = [] {
        const std::time_t moment = std::time(nullptr) + (5 * 60 + 30) * 60;
        char text[sizeof "2024-02-29 23:59:59"];
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::gmtime(&moment));
        return std::string(text);
    };
    const std::string before = now();
    const std::string born = New<Date>()->SQLDateTime().ToStd();
    EXPECT_LE(before, born);
    EXPECT_LE(born, now());
}

TEST(Date, readsAllForms) {
    EXPECT_EQ(after("2024-02-29 23:59:59"), "2024-02-29 23:59:59");
    EXPECT_EQ(after("2024-12-01T00:00:00Z"), "2024-12-01 00:00:00");
    EXPECT_EQ(after("2024-12-01T01:02:03"), "2024-12-01 01:02:03");
    EXPECT_EQ(after(" 0007-12-01\n"), "0007-12-01 00:00:00");
    const Ref<Date> date = New<Date>();
    date->SQLDateTime("2024-05-06 07:08:09");
    EXPECT_EQ(date->Year() * 10000 + date->Month() * 100 + date->Day(), 20240506);
    EXPECT_EQ(date->Hour() * 10000 + date->Minute() * 100 + date->Second(), 70809);
}

TEST(Date, staysAsItIsWhenTheTextMakesNoSense) {
    for (const char* text : {"", "yesterday", "2023-02-29", "2024-13-01", "2024-00-10", "2024-01-00", "2024-01-32",
                             "2024-01-01 24:00:00", "2024-01-01 12:60:00", "2024-01-01 12:00:61", "2024-01-01 12:00",
                             "24-01-01", "2024-1-1", "2024-01-01 12:00:00ZZ", "2024-01-01x", "-024-01-01"}) {
        EXPECT_EQ(after(text), "2001-02-03 04:05:06") << text;
    }
}
