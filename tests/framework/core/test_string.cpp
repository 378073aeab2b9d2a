// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "framework/core/text/String.h"

using namespace framework;

namespace {

String utf16(const String& text) {
    return text.Converted(Encodings::UTF16);
}

}  // namespace

TEST(StringEquality, ignoresCaseBySimpleFolding) {
    EXPECT_EQ(String("Content-Length"), String("content-lENGTH"));
    EXPECT_EQ(String("ΣΊΣΥΦΟΣ"), String("σίσυφος"));
    EXPECT_EQ(String("GROẞ"), String("groß"));
    EXPECT_EQ(String("\u212A"), String("k"));
    // One character stays one character: no full folding, and the Turkish letters stay apart.
    EXPECT_NE(String("STRASSE"), String("straße"));
    EXPECT_NE(String("İ"), String("i"));
    EXPECT_NE(String("a"), String(std::string_view("a\0", 2)));
}

TEST(StringEquality, goesByCharactersAcrossEncodings) {
    EXPECT_EQ(utf16("Ärger 𝄞"), String("ärger 𝄞"));
    EXPECT_EQ(String("\xC4", Encodings::WindowsLatin1), String("ä"));
    EXPECT_EQ(String("\xC3\xA4", Encodings::Undefined), String("Ä"));
    EXPECT_NE(String("\xC3"), String("\xC3", Encodings::WindowsLatin1));
}

TEST(StringEquality, agreesWithHashAndOrder) {
    const String texts[] = {"",  "a",      "A",        "b",    "é",    "É", String("\xE9", Encodings::WindowsLatin1),
                            "k", "\u212A", utf16("K"), "\xFF", "\xFE", "𝄞", utf16("𝄞")};
    for (const String& left : texts) {
        for (const String& right : texts) {
            EXPECT_EQ(left == right, (left <=> right) == 0);
            EXPECT_EQ(left<right, right> left);
            EXPECT_TRUE(left != right || left.Hash() == right.Hash());
        }
    }
}

TEST(StringCharacters, countInvalidBytesOneByOne) {
    EXPECT_EQ(String("a\xC3").Length(), 2U);                     // cut off
    EXPECT_EQ(String("\xC0\x80").Length(), 2U);                  // NUL in too long a form
    EXPECT_EQ(String("\xED\xA0\x80").Length(), 3U);              // half a UTF-16 pair
    EXPECT_EQ(String("\xF4\x90\x80\x80").Length(), 4U);          // above the last code point
    EXPECT_EQ(String("\xE2\x82\xAC\x82").Length(), 2U);          // one byte too many
    EXPECT_EQ(String("\xDF\xBF\xF4\x8F\xBF\xBF").Length(), 2U);  // the last of their lengths
    EXPECT_EQ(utf16("a𝄞").Length(), 2U);
    EXPECT_EQ(String(utf16("ab").Bytes().substr(0, 3), Encodings::UTF16).Length(), 2U);
    EXPECT_EQ(String("é", Encodings::Undefined).Length(), 2U);
}

// Offsets are found from the place last asked for, so each order of asking must give the same answers.
TEST(StringCharacters, areFoundInAnyOrder) {
    const String text = "aé€𝄞\xFFz€é";
    const std::size_t offsets[] = {0, 1, 3, 6, 10, 11, 12, 15, 17};
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> index(0, 8);
    for (int i = 0; i < 1000; ++i) {
        const std::size_t character = index(random);
        if (i % 2 == 0) {
            ASSERT_EQ(text.OffsetOf(character), offsets[character]);
        } else {
            ASSERT_EQ(text.CharactersBefore(offsets[character]), character);
        }
    }
    EXPECT_EQ(text.OffsetOf(99), 17U);
    EXPECT_EQ(text.CharactersBefore(99), 8U);
}

TEST(StringCharacters, areCountedAnewWhenAnAppendedByteCompletesOne) {
    String text = "\xE2\x82";
    EXPECT_EQ(text.OffsetOf(2), 2U);
    EXPECT_EQ(text.Length(), 2U);
    text += String("\xAC");
    EXPECT_EQ(text.Length(), 1U);
    EXPECT_EQ(text.OffsetOf(1), 3U);
}

TEST(StringAppend, leavesOtherHoldersAlone) {
    String text = "one";
    const String copy = text;
    text += " two";
    const String later = text;
    for (int i = 0; i < 100; ++i) text += "é";
    EXPECT_EQ(copy.ToStd(), "one");
    EXPECT_EQ(later.ToStd(), "one two");
    EXPECT_TRUE(later.IsAscii());
    EXPECT_EQ(text.Length(), 107U);
    EXPECT_EQ(text.CString()[text.ByteCount()], '\0');
}

TEST(StringAppend, keepsTheLabelThatIsNeeded) {
    EXPECT_EQ((String("a") + String("\xE9", Encodings::WindowsLatin1)).Encoding(), Encodings::WindowsLatin1);
    EXPECT_EQ((String("é") + String("a", Encodings::Undefined)).Encoding(), Encodings::UTF8);
    EXPECT_EQ((String("é") + String("\xE9", Encodings::Undefined)).Encoding(), Encodings::Undefined);
    String mixed = "é";
    mixed += String("\xE9", Encodings::WindowsLatin1);
    EXPECT_EQ(mixed.ToStd(), "éé");
    EXPECT_EQ(mixed.Encoding(), Encodings::UTF8);
    mixed = "a" + utf16("b") + "c";
    EXPECT_EQ(mixed.ToStd(), "abc");
}

TEST(StringConversion, goesThereAndBack) {
    const String text = "a é € 𝄞";
    EXPECT_EQ(utf16(text).ByteCount(), 2U * 8);
    EXPECT_EQ(utf16(text).Converted(Encodings::UTF8).ToStd(), text.ToStd());
    EXPECT_EQ(text.Converted(Encodings::WindowsLatin1).ToStd(), "a \xE9 \x80 ?");
    EXPECT_EQ(text.Converted(Encodings::WindowsLatin1).Converted(Encodings::UTF8).ToStd(), "a é € ?");
    // Stray bytes, as in a file name, survive the way through UTF-16.
    EXPECT_EQ(utf16("\xFFx\xC3").Converted(Encodings::UTF8).ToStd(), "\xFFx\xC3");
    // Half a pair has no form in UTF-8.
    const String half(std::string_view("\x00\xD8", 2), Encodings::UTF16);
    EXPECT_EQ(half.Converted(Encodings::UTF8).ToStd(), "\uFFFD");
}
