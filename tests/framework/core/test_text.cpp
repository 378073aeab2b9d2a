// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Fields.h"
#include "framework/core/text/Digest.h"
#include "framework/core/text/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace framework;
using testing::ElementsAre;

namespace {

std::vector<std::string> pieces(const String& text, const String& separator) {
    std::vector<std::string> result;
    for (const String& piece : Split(text, separator)) result.push_back(piece.ToStd());
    return result;
}

/// InStr by its definition: the first position at which each character equals that of the text looked for.
int inStrByDefinition(int start, const String& text, const String& find) {
    for (int position = std::max(start, 1); position <= Len(text) - Len(find) + 1; ++position) {
        if (Mid(text, position, Len(find)) == find) return position;
    }
    return 0;
}

std::string hex(const String& bytes) {
    String text;
    for (int i = 1; i <= Len(bytes); ++i) text += Right("00" + Hex(Asc(Mid(bytes, i, 1))), 2);
    return Lowercase(text).ToStd();
}

}  // namespace

TEST(Mid, takesPartsInCharacters) {
    const String text = "aé€𝄞z";
    EXPECT_EQ(Mid(text, 2, 3).ToStd(), "é€𝄞");
    EXPECT_EQ(Mid(text, 4).ToStd(), "𝄞z");
    EXPECT_EQ(Mid(text, 0, 2).ToStd(), "aé");
    EXPECT_EQ(Mid(text, 5, 2147483647).ToStd(), "z");
    EXPECT_TRUE(Mid(text, 6).IsEmpty());
    EXPECT_TRUE(Mid(text, 2, -1).IsEmpty());
}

TEST(InStr, countsInCharactersFromOne) {
    EXPECT_EQ(InStr("é€ab", "AB"), 3);
    EXPECT_EQ(InStr(0, "abab", "ab"), 1);
    EXPECT_EQ(InStr(2, "abab", "ab"), 3);
    EXPECT_EQ(InStr(4, "abab", "ab"), 0);
    EXPECT_EQ(InStr("abc", ""), 1);
    EXPECT_EQ(InStr(3, "abc", ""), 3);
    EXPECT_EQ(InStr("", ""), 0);
    EXPECT_EQ(InStr(String(std::string_view("a\0b", 3)), Chr(0)), 2);
    EXPECT_EQ(InStr("x\xE2\x82y\xE2\x82\xAC", "€"), 5);
    EXPECT_EQ(InStrB(1, "éAb", "b"), 4);
    EXPECT_EQ(InStrB(1, "AB", "b"), 0);
}

// Letters that fold into ASCII and ones of other lengths, stray bytes and repeated beginnings, in all encodings: the
// quick ways of searching must find what the definition finds.
TEST(InStr, findsWhatTheDefinitionFinds) {
    const std::vector<String> alphabet = {"a", "A", "k", "K", "\u212A", "S",    "ſ",
                                          "ß", "ẞ", "é", "É", ".",      "\xC3", "\xA9"};
    const TextEncoding encodings[] = {Encodings::UTF8, Encodings::UTF16, Encodings::WindowsLatin1};
    std::mt19937 random(7);
    const auto any = [&random](std::size_t count) { return random() % count; };
    const auto text = [&](std::size_t most, std::size_t letters) {
        String result;
        for (std::size_t left = any(most) + 1; left > 0; --left) result += alphabet[any(letters)];
        return result.Converted(encodings[any(3)]);
    };
    for (int round = 0; round < 20000; ++round) {
        // Every second time ASCII only.
        const std::size_t letters = round % 2 == 0 ? 4 : alphabet.size();
        const String where = text(12, letters);
        const String what = text(3, round % 3 == 0 ? 4 : letters);
        const int start = static_cast<int>(any(5));
        ASSERT_EQ(InStr(start, where, what), inStrByDefinition(start, where, what))
            << where.Bytes() << " | " << what.Bytes();
    }
}

TEST(Replace, takesTheFirstOrAll) {
    EXPECT_EQ(Replace("(NULL), (null)", "(null)", "").ToStd(), ", (null)");
    EXPECT_EQ(ReplaceAll("aAaa", "aa", "b").ToStd(), "bb");
    EXPECT_EQ(ReplaceAll("a  b   c", "  ", "").ToStd(), "ab c");
    EXPECT_EQ(ReplaceAll("%", "%", "%25").ToStd(), "%25");
    EXPECT_EQ(ReplaceAll("groẞ", "ß", "ss").ToStd(), "gross");
    EXPECT_EQ(ReplaceAll("abc", "", "x").ToStd(), "abc");
    EXPECT_EQ(ReplaceAll("abc", "abc", "").ByteCount(), 0U);
    EXPECT_EQ(ReplaceAll("a\xFF"
                         "b\xFF",
                         "b", "")
                  .ToStd(),
              "a\xFF\xFF");
    const String wide = ReplaceAll(String("a/b").Converted(Encodings::UTF16), "/", ":é");
    EXPECT_EQ(wide.Encoding(), Encodings::UTF16);
    EXPECT_EQ(wide.Converted(Encodings::UTF8).ToStd(), "a:éb");
}

TEST(Trim, takesUnicodeSpaceButNoNul) {
    EXPECT_EQ(Trim(" \t\r\n a b\u00A0\u3000 ").ToStd(), "a b");
    EXPECT_TRUE(Trim(" \n").IsEmpty());
    EXPECT_EQ(LenB(Trim(" " + Chr(0) + " ")), 1);
    // The last byte of the no-break space is no space by itself.
    EXPECT_EQ(Trim("x\xA0 ").ToStd(), "x\xA0");
    EXPECT_EQ(Trim(String("x\xA0", Encodings::Undefined)).ToStd(), "x\xA0");
    EXPECT_EQ(Trim(String(" x ").Converted(Encodings::UTF16)), String("x"));
}

TEST(Lowercase, mapsCharacterByCharacter) {
    EXPECT_EQ(Lowercase("ÄΣ İ Straße1").ToStd(), "äσ İ straße1");
    EXPECT_EQ(Uppercase("äσς straße").ToStd(), "ÄΣΣ STRAßE");
    EXPECT_EQ(Lowercase("A\xC9\xFF").ToStd(), "a\xC9\xFF");
    EXPECT_EQ(Lowercase(String("A\xC9", Encodings::WindowsLatin1)).ToStd(), "a\xE9");
    EXPECT_EQ(Lowercase(String("A\xC9", Encodings::Undefined)).ToStd(), "a\xC9");
    // The capital of the micro sign is Greek, and has no place in this encoding.
    EXPECT_EQ(Uppercase(String("\xB5\xFF?", Encodings::WindowsLatin1)).ToStd(), "\xB5\x9F?");
}

TEST(Split, givesThePieces) {
    EXPECT_EQ(Split("", ",").Ubound(), -1);
    EXPECT_EQ(Split("a" + Chr(0), Chr(0)).Ubound(), 1);
    EXPECT_THAT(pieces(",a,,b,", ","), ElementsAre("", "a", "", "b", ""));
    EXPECT_THAT(pieces("oneANDtwoandthree", "And"), ElementsAre("one", "two", "three"));
    EXPECT_THAT(pieces("a\r\nb\r\n", "\r\n"), ElementsAre("a", "b", ""));
    EXPECT_THAT(pieces("xxx", "xx"), ElementsAre("", "x"));
    EXPECT_THAT(pieces("é\u212Aé\xFFké", "K"), ElementsAre("é", "é\xFF", "é"));
    const Array<String> raw = Split(String(std::string_view("\xE9\0\xC3", 3), Encodings::Undefined), Chr(0));
    ASSERT_EQ(raw.Ubound(), 1);
    EXPECT_EQ(raw(1).ToStd(), "\xC3");
    EXPECT_EQ(raw(1).Encoding(), Encodings::Undefined);
}

TEST(NthField, agreesWithSplitAndCountFields) {
    for (const char* text : {"a", "/a/b", "a/b/", "//", "é/\xFF"}) {
        const Array<String> fields = Split(text, "/");
        EXPECT_EQ(CountFields(text, "/"), fields.Ubound() + 1);
        for (int i = -1; i <= fields.Ubound() + 1; ++i) {
            const std::string expected = i < 0 || i > fields.Ubound() ? "" : fields(i).ToStd();
            EXPECT_EQ(NthField(text, "/", i + 1).ToStd(), expected) << text << " " << i;
        }
    }
    EXPECT_EQ(CountFields("", "/"), 1);
    EXPECT_TRUE(NthField("", "/", 1).IsEmpty());
    EXPECT_EQ(NthField("a/b", "", 1).ToStd(), "a/b");
}

// The test values of RFC 1321.
TEST(MD5, givesTheDigestsOfTheStandard) {
    EXPECT_EQ(hex(MD5("")), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hex(MD5("abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hex(MD5("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789")),
              "d174ab98d277d9f5a5611c2c9f419d9f");
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
