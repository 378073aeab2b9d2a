// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "framework/core/objects/Random.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/Format.h"

using namespace framework;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string formatted(double number, const char* mask) {
    return Format(number, mask).ToStd();
}

}  // namespace

TEST(Str, writesPlainNumbers) {
    EXPECT_EQ(Str(0).ToStd(), "0");
    EXPECT_EQ(Str(std::numeric_limits<std::int32_t>::min()).ToStd(), "-2147483648");
    EXPECT_EQ(Str(std::numeric_limits<std::uint64_t>::max()).ToStd(), "18446744073709551615");
    EXPECT_EQ(Str(2.0).ToStd(), "2");
    EXPECT_EQ(Str(-0.0).ToStd(), "0");
    EXPECT_EQ(Str(0.1).ToStd(), "0.1");
    EXPECT_EQ(Str(-0.000001).ToStd(), "-0.000001");
    EXPECT_EQ(Str(123456789012345.0).ToStd(), "123456789012345");
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

TEST(Hex, hasNoLeadingZeros) {
    EXPECT_EQ(Hex(0).ToStd(), "0");
    EXPECT_EQ(Hex(10).ToStd(), "A");
    EXPECT_EQ(Hex(255).ToStd(), "FF");
    EXPECT_EQ(Hex(-1).ToStd(), "FFFFFFFF");
    EXPECT_EQ(Hex(std::uint64_t{1} << 63).ToStd(), "8000000000000000");
    EXPECT_EQ(Hex(std::uint8_t{200}).ToStd(), "C8");
}

TEST(Val, readsTheNumberInFront) {
    EXPECT_EQ(Val("3b1"), 3);
    EXPECT_EQ(Val(" \t\u00A0-12.5e2x"), -1250);
    EXPECT_EQ(Val("+.5"), 0.5);
    EXPECT_EQ(Val("5."), 5);
    EXPECT_EQ(Val("1e"), 1);
    EXPECT_EQ(Val("1,234"), 1);
    EXPECT_EQ(Val("4000 x 3000"), 4000);
    EXPECT_EQ(Val(String("42").Converted(Encodings::UTF16)), 42);
    for (const char* text : {"", "-", ".", "e5", "(null)", "inf", "nan", "infinity", "--1", "+-1", "x1", "&", "&x1"}) {
        EXPECT_EQ(Val(text), 0) << text;
    }
}

TEST(Val, readsPrefixes) {
    EXPECT_EQ(CDbl("&hff"), 255);
    EXPECT_EQ(CDbl("&HFFFFFFFF"), 4294967295.0);
    EXPECT_EQ(CDbl("&h1g"), 1);
    EXPECT_EQ(CDbl("&h"), 0);
    EXPECT_EQ(CDbl("&o178"), 15);
    EXPECT_EQ(CDbl("&b1012"), 5);
}

TEST(Val, copesWithNumbersThatNoDoubleHolds) {
    const std::string zeros(400, '0');
    EXPECT_EQ(Val("1e400"), kInfinity);
    EXPECT_EQ(Val("-1e400"), -kInfinity);
    EXPECT_EQ(Val("1e-400"), 0);
    EXPECT_EQ(Val(String("1" + zeros)), kInfinity);
    EXPECT_EQ(Val(String("0." + zeros + "1")), 0);
    EXPECT_EQ(Val(String("0." + zeros + "1e+5")), 0);
    EXPECT_EQ(Val(String("0." + zeros + "1e5000")), kInfinity);
    EXPECT_EQ(Val(String("1" + zeros + "e-800")), 0);
    EXPECT_EQ(Val(String("1" + zeros + "e-400")), 1);
    EXPECT_EQ(Val("1e99999999999999999999"), kInfinity);
    EXPECT_EQ(Val("1e-99999999999999999999"), 0);
}

TEST(Numbers, doNotDependOnTheLocale) {
    // Of no use where the locale is not installed; it is set for whoever has it.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(Val("1.5"), 1.5);
    EXPECT_EQ(Str(1.5).ToStd(), "1.5");
    EXPECT_EQ(formatted(1234.5, "###,###.0"), "1,234.5");
    std::setlocale(LC_ALL, "C");
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
        {0.5, "###.00", ".50"},
        {36.0, "###.00", "36.00"},
        {12345.678, "###.00", "12345.68"},
        {999.995, "###.00", "1000.00"},
        {2.8, "##.0", "2.8"},
        {0.96, "##.0", "1.0"},
        {35, "####.0", "35.0"},
        {0.1, "###.0", ".1"},
        {125, "####", "125"},
        {62.5, "####", "63"},
        {0.4, "####", "0"},
        {123456, "####", "123456"},
        {0, "-#", "0"},
        {7, "-#", "7"},
        {-7, "-#", "-7"},
        {-0.4, "-#", "0"},
        {-0.5, "-#", "-1"},
        {2.5, "-#", "3"},
        {-2147483648.0, "-#", "-2147483648"},
        {0, "#.#", "0"},
        {2, "#.#", "2"},
        {2.25, "#.#", "2.3"},
        {2.35, "#.#", "2.4"},
        {-1.5, "#.#", "-1.5"},
        {0.25, "#.#", ".3"},
        {-0.04, "#.#", "0"},
        {9.96, "#.#", "10"},
        {3, "0", "3"},
        {1, "00000000", "00000001"},
        {123456789, "00000000", "123456789"},
        {0, "###,###", "0"},
        {999, "###,###", "999"},
        {1000, "###,###", "1,000"},
        {1234567, "###,###", "1,234,567"},
        {7, "000,000", "000,007"},
        {5, "0#", "05"},
        {1.5, "#.0##", "1.5"},
        {1.0, "#.0##", "1.0"},
        {12.5, ".00", "12.50"},
        {0.125, "#%", "13%"},
        {5, "+#", "+5"},
        {-5, "+#", "-5"},
        {-5, "\\#0 kg", "-#5 kg"},
        {12345, "#.##e+00", "1.23e+04"},
        {0.00999, "0.0E0", "1.0E-2"},
        {0, "0.0e+0", "0.0e+0"},
        {9.99, "#e0", "1e1"},
        {-5, "0;(0);none", "(5)"},
        {0, "0;(0);none", "none"},
        {-0.2, "0;(0)", "0"},
        {-5, "0;;none", "-5"},
        {1e22, "#", "10000000000000000000000"},
        {kInfinity, "####", "inf"},
        {-kInfinity, "###.00", "-inf"},
        {std::nan(""), "#", "nan"},
        {5, "", ""},
    };
    for (const FormatCase& each : cases) {
        EXPECT_EQ(formatted(each.number, each.mask), each.text) << each.number << " under " << each.mask;
    }
}

TEST(Format, reachesTheEndsOfADouble) {
    EXPECT_EQ(formatted(std::numeric_limits<double>::max(), "#").size(), 309U);
    EXPECT_EQ(formatted(std::numeric_limits<double>::denorm_min(), "#.##"), "0");
    const std::string places(1074, '0');
    EXPECT_EQ(formatted(std::numeric_limits<double>::denorm_min(), ("." + places).c_str()).back(), '5');
}

// Where no half is to be rounded, the C library's correctly rounded text is the right one.
TEST(Format, roundsAsTheExactValueDemands) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        const double number = static_cast<double>(random() >> (random() % 60)) / 1e7;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.3f", number);
        if (std::fmod(std::ldexp(number, 4), 2) == 1) continue;
        ASSERT_EQ(formatted(number, "0.000"), expected);
        ASSERT_EQ(CDbl(Format(-number, "-#.###")), -CDbl(String(expected)));
    }
}

TEST(Random, staysInItsRange) {
    const Ref<Random> random = New<Random>();
    bool seen[4] = {};
    for (int i = 0; i < 1000; ++i) {
        const int number = random->InRange(-1, 2);
        ASSERT_GE(number, -1);
        ASSERT_LE(number, 2);
        seen[number + 1] = true;
        const double part = Rnd();
        ASSERT_GE(part, 0);
        ASSERT_LT(part, 1);
    }
    EXPECT_TRUE(seen[0] && seen[1] && seen[2] && seen[3]);
    EXPECT_EQ(random->InRange(5, 5), 5);
    const int most = std::numeric_limits<int>::max();
    EXPECT_NE(random->InRange(-most - 1, most), random->InRange(most, -most - 1));
}
