// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "framework/core/text/Format.h"

using namespace framework;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string formatted(double number, const char* mask) {
    return Format(number, mask).ToStd();
}

}  // namespace

TEST(Str, writesPlainNumbers) {
    EXPECT_EQ(Str(std::numeric_limits<std::int32_t>::min()).ToStd(), "-2147483648");
    EXPECT_EQ(Str(std::numeric_limits<std::uint64_t>::max()).ToStd(), "18446744073709551615");
    EXPECT_EQ(Str(-0.0).ToStd(), "0");
    EXPECT_EQ(Str(-0.000001).ToStd(), "-0.000001");
    EXPECT_EQ(Str(1e15).ToStd(), "1000000000000000");
    EXPECT_EQ(Str(1e300).ToStd(), "1e+300");
    EXPECT_EQ(Str(kInfinity).ToStd(), "inf");
    EXPECT_EQ(Str(-std::nan("")).ToStd(), "nan");
}

TEST(Str, isReadBackByVal) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isfinite(number)) continue;
        ASSERT_EQ(Val(Str(number)), number) << Str(number).Bytes();
        const double ordinary = static_cast<double>(static_cast<std::int64_t>(bits)) / 1e12;
        ASSERT_EQ(Val(Str(ordinary)), ordinary);
        ASSERT_EQ(Str(ordinary).Bytes().find('e'), std::string_view::npos);
    }
}

TEST(Val, readsTheNumberInFront) {
    EXPECT_EQ(Val("3b1"), 3);
    EXPECT_EQ(Val(" \t\u00A0-12.5e2x"), -1250);
    EXPECT_EQ(Val("+.5"), 0.5);
    EXPECT_EQ(Val("1e"), 1);
    EXPECT_EQ(Val(String("42").Converted(Encodings::UTF16)), 42);
    for (const char* text : {"", "-", ".", "e5", "(null)", "inf", "nan", "infinity", "--1", "+-1", "x1", "&", "&x1"}) {
        EXPECT_EQ(Val(text), 0) << text;
    }
}

TEST(ToInteger, cutsAndSaturates) {
    EXPECT_EQ(ToInteger(2.9), 2);
    EXPECT_EQ(ToInteger(-2.9), -2);
    EXPECT_EQ(ToInteger(1e20), 2147483647);
    EXPECT_EQ(ToInteger(-kInfinity), -2147483647 - 1);
    EXPECT_EQ(ToInteger(std::nan("")), 0);
}

struct FormatCase {
    double number;
    const char* mask;
    const char* text;
};

TEST(Format, followsItsMask) {
    const FormatCase cases[] = {
        {0, "###.00", ".00"},
        {0.004, "###.00", ".00"},
        {0.005, "###.00", ".01"},   // this double is a little more than it looks
        {1.005, "###.00", "1.00"},  // and this one a little less
        {12345.678, "###.00", "12345.68"},
        {0.96, "##.0", "1.0"},
        {0.1, "###.0", ".1"},
        {62.5, "####", "63"},
        {123456, "####", "123456"},
        {0, "-#", "0"},
        {-7, "-#", "-7"},
        {-0.5, "-#", "-1"},
        {0, "#.#", "0"},
        {2.25, "#.#", "2.3"},
        {-1.5, "#.#", "-1.5"},
        {-0.04, "#.#", "0"},
        {1, "00000000", "00000001"},
        {0, "###,###", "0"},
        {1000, "###,###", "1,000"},
        {1234567, "###,###", "1,234,567"},
        {0.125, "#%", "13%"},
        {-5, "+#", "-5"},
        {-5, "\\#0 kg", "-#5 kg"},
        {12345, "#.##e+00", "1.23e+04"},
        {9.99, "#e0", "1e1"},
        {-5, "0;(0);none", "(5)"},
        {-0.2, "0;(0)", "0"},
        {-5, "0;;none", "-5"},
        {1e22, "#", "10000000000000000000000"},
        {kInfinity, "####", "inf"},
        {std::nan(""), "#", "nan"},
    };
    for (const FormatCase& each : cases) {
        EXPECT_EQ(formatted(each.number, each.mask), each.text) << each.number << " under " << each.mask;
    }
}
