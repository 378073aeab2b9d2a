// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/InternetHeaders.h"

#include <gtest/gtest.h>

using namespace marrowbeck;

namespace {

InternetHeaders& block(const Ref<InternetHeaders>& made, const char* text) {
    made->_ParseHeaders(text);
    return *made;
}

std::string valueOf(const char* text, const char* name, int index = 0) {
    return block(New<InternetHeaders>(), text).Value(name, index).ToStd();
}

}  // namespace

TEST(InternetHeaders, KeepsOccurrencesInOrderWithoutGaps) {
    const auto headers = New<InternetHeaders>();
    for (const char* value : {"a", "b", "c", "d"}) headers->AppendHeader("Accept", value);
    headers->AppendHeader("Other", "x");
    EXPECT_EQ(headers->NameCount("accept"), 4);
    EXPECT_EQ(headers->Count(), 5);
    EXPECT_EQ(headers->CommaSeparatedValues("ACCEPT").Bytes(), "a, b, c, d");
    EXPECT_EQ(headers->Name(3).Bytes(), "Accept");
    EXPECT_EQ(headers->Value(3).Bytes(), "d");
    EXPECT_TRUE(headers->Value(5).IsEmpty());
    EXPECT_THROW(headers->Name(5), OutOfBoundsException);

    headers->Delete("Accept", 1);
    EXPECT_EQ(headers->CommaSeparatedValues("Accept").Bytes(), "a, c, d");
    headers->Delete("Accept", 0);
    headers->Delete("Accept", 7);
    EXPECT_EQ(headers->CommaSeparatedValues("Accept").Bytes(), "c, d");
    EXPECT_EQ(headers->Value("Accept", -1).Bytes(), "c");
    headers->Delete("Accept");
    EXPECT_EQ(headers->NameCount("Accept"), 0);
    EXPECT_EQ(headers->_FormatHTTPHeaders().Bytes(), "Other: x");
}

TEST(InternetHeaders, SettingLeavesOneOccurrenceOrTouchesOne) {
    const auto headers = New<InternetHeaders>();
    headers->SetHeader("A", "1");
    headers->SetHeader("a", "2");
    EXPECT_EQ(headers->_FormatHTTPHeaders().Bytes(), "A: 2");
    headers->AppendHeader("A", "3");
    headers->AppendHeader("A", "4");
    headers->SetHeader("A", "three", 1);
    EXPECT_EQ(headers->CommaSeparatedValues("A").Bytes(), "2, three, 4");
    headers->SetHeader("A", "5", 3);
    EXPECT_EQ(headers->Value("A", 3).Bytes(), "5");
    headers->SetHeader("A", "6");
    EXPECT_EQ(headers->_FormatHTTPHeaders().Bytes(), "A: 6");
    headers->SetHeader("B", "7", 0);
    EXPECT_EQ(headers->Value("B").Bytes(), "7");
}

TEST(InternetHeaders, ReadsLinesOfEveryKind) {
    for (const std::string eol : {"\r\n", "\n", "\r"}) {
        const std::string text = "HTTP/1.0 200 OK" + eol + "Content-Length:  12 " + eol + "A: b:c" + eol + " more" +
                                 eol + "\t  yet" + eol + eol + "no colon" + eol + ": nameless" + eol + "a:two";
        const auto headers = New<InternetHeaders>();
        headers->_ParseHeaders(String(text));
        EXPECT_EQ(headers->Count(), 4) << text;
        EXPECT_EQ(headers->Value("content-LENGTH").Bytes(), "12 ");
        EXPECT_EQ(headers->Value("A").Bytes(), "b:c more   yet");
        EXPECT_EQ(headers->Value("A", 1).Bytes(), "two");
        EXPECT_EQ(headers->Value("").Bytes(), "nameless");
        EXPECT_EQ(headers->Source().Bytes(), text);
    }
    EXPECT_EQ(valueOf("A: 1\r\nB: 2\nC: 3\rD: 4", "B"), "2\nC: 3\rD: 4");
    EXPECT_EQ(valueOf(" A : 1", " A "), "1");
}
