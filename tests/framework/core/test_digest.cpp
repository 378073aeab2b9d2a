// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Digest.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/core/text/Text.h"

using namespace framework;

namespace {

std::string hex(const String& bytes) {
    String text;
    for (int i = 1; i <= Len(bytes); ++i) text += Right("00" + Hex(Asc(Mid(bytes, i, 1))), 2);
    return Lowercase(text).ToStd();
}

}  // namespace

// The test values of RFC 1321.
TEST(MD5, givesTheDigestsOfTheStandard) {
    EXPECT_EQ(hex(MD5("")), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hex(MD5("abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hex(MD5("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789")),
              "d174ab98d277d9f5a5611c2c9f419d9f");
    EXPECT_EQ(LenB(MD5(Chr(0))), 16);
    EXPECT_EQ(Len(MD5(Chr(0))), 16);
}

// The test values of RFC 4648.
TEST(Base64, givesTheTextsOfTheStandard) {
    const char* const pairs[][2] = {{"", ""},
                                    {"f", "Zg=="},
                                    {"fo", "Zm8="},
                                    {"foo", "Zm9v"},
                                    {"foob", "Zm9vYg=="},
                                    {"fooba", "Zm9vYmE="},
                                    {"foobar", "Zm9vYmFy"}};
    for (const auto& [plain, encoded] : pairs) {
        EXPECT_EQ(EncodeBase64(plain).ToStd(), encoded);
        EXPECT_EQ(DecodeBase64(encoded).ToStd(), plain);
    }
    const String bytes(std::string_view("\0\xFF\xFE?", 4), Encodings::Undefined);
    EXPECT_TRUE(DecodeBase64(EncodeBase64(bytes)).SameBytes(bytes));
}
