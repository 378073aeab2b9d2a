// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/TextEncoding.h"

#include <gtest/gtest.h>

namespace marrowbeck::tools {
namespace {

TEST(TextEncoding, OnlyWellFormedUtf8IsUtf8) {
    for (const char* const good : {"", "plain", "\xc3\xa9", "\xe4\xb8\x98", "\xf0\x9f\x8f\x94", "\xed\x9f\xbf"})
        EXPECT_TRUE(isUtf8(good)) << good;
    for (const char* const bad : {"\xe9", "\xc3", "\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80",
                                  "\xf8\x88\x80\x80\x80", "\x80", "\xc3(", "a\xe4\xb8"})
        EXPECT_FALSE(isUtf8(bad)) << testing::PrintToString(bad);
}

TEST(TextEncoding, WhatIsNotUtf8IsWindows1252) {
    EXPECT_EQ(guessedToUtf8("caf\xc3\xa9"), "café");
    EXPECT_EQ(guessedToUtf8("caf\xe9 \x80"), "café €");
    EXPECT_EQ(guessedToUtf8("\xe9\x81\xe9"), "é\xef\xbf\xbdé");  // 0x81 stands for nothing
}

TEST(TextEncoding, LongTextsAreConvertedWhole) {
    EXPECT_EQ(convertToUtf8(std::string(5000, '\xe9'), "CP1252").size(), 10000U);
}

TEST(TextEncoding, IptcGoesByItsDeclaration) {
    EXPECT_EQ(iptcToUtf8("\xdc\xde\xe0\xd5", "\x1b-L"), "море");
    EXPECT_EQ(iptcToUtf8("caf\xc3\xa9", "\x1b%G"), "café");
    EXPECT_EQ(iptcToUtf8("caf\xe9", "\x1b%G"), "café");  // the declaration is a mistake
    EXPECT_EQ(iptcToUtf8("\xc3\xa9", "\x1b.A"), "Ã©");
    EXPECT_EQ(iptcToUtf8("caf\xc3\xa9", "nonsense"), "café");
}

TEST(TextEncoding, TidyingTakesNulsAndOuterBlanks) {
    EXPECT_EQ(tidied(std::string_view(" a\0b \n c\0\0 \r\n", 13)), "ab \n c");
    EXPECT_EQ(tidied(" \n "), "");
}

}  // namespace
}  // namespace marrowbeck::tools
