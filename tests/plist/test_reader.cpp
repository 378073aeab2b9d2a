// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

struct Row {
    const char* name;
    /// The lines between the header and the end.
    const char* lines;
    /// The tree that comes of it.
    const char* tree;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.name;
}

class Reader : public testing::TestWithParam<Row> {};

}  // namespace

TEST_P(Reader, Reads) {
    const Documents documents;
    const auto document = documents.Of(GetParam().lines);
    EXPECT_EQ(outline(document->root), GetParam().tree);
    EXPECT_FALSE(document->error);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Reader,
    testing::Values(
        Row{"Leaves",
            "\t<key>s</key>\n\t<string>x</string>\n\t<key>i</key>\n\t<integer>-1</integer>\n\t<key>t</key>\n\t<true/>\n"
            "\t<key>f</key>\n\t<false/>\n\t<key>d</key>\n\t<data>\n\tYWJj\n\tZA==\n\t</data>\n",
            "s=string:x i=integer:-1 t=boolean:true f=boolean:false d=data:YWJjZA=="},
        Row{"Nested",
            "\t<key>a</key>\n\t<array>\n\t\t<dict>\n\t\t\t<key>b</key>\n\t\t\t<array>\n\t\t\t\t<true/>\n\t\t\t</"
            "array>\n"
            "\t\t</dict>\n\t\t<string>x</string>\n\t</array>\n\t<key>z</key>\n\t<string>z</string>\n",
            "a=[0={b=[0=boolean:true]} 1=string:x] z=string:z"},
        Row{"EmptyNodes",
            "\t<key>a</key>\n\t<dict/>\n\t<key>b</key>\n\t<array/>\n\t<key>c</key>\n\t<dict>\n\t</dict>\n"
            "\t<key>d</key>\n\t<array>\n\t\t<dict/>\n\t\t<array/>\n\t</array>\n\t<key>z</key>\n\t<string></string>\n",
            "a={} b=[] c={} d=[0={} 1=[]] z=string:"},
        Row{"TwoFragmentsOnALine", "\t<key>a</key><string>b</string><key>c</key><true/>\n",
            "a=string:b c=boolean:true"},
        Row{"WindowsLineEnds", "\t<key>a</key>\r\n\t<string>b</string>\r\n", "a=string:b"},
        Row{"TagsInAnyCase", "\t<KEY>a</Key>\n\t<String>b</STRING>\n\t<key>c</key>\n\t<TRUE/>\n",
            "a=String:b c=boolean:true"},
        Row{"KeysInAnyCase", "\t<key>a</key>\n\t<string>1</string>\n\t<key>A</key>\n\t<string>2</string>\n",
            "a=string:2"},
        Row{"AnyWordIsAType", "\t<key>a</key>\n\t<colour space=\"x\">red</colour space=\"x\">\n",
            "a=colour space=\"x\":red"},
        Row{"EntitiesInValues", "\t<key>a</key>\n\t<string>a &lt; b &amp; c &#65;</string>\n",
            "a=string:a < b &amp; c &#65;"},
        Row{"NoEntitiesInKeys", "\t<key>a&lt;&amp;</key>\n\t<true/>\n", "a&lt;&amp;=boolean:true"},
        Row{"EntitiesOnceMoreInWhatWasGathered", "\t<key>a</key>\n\t<data>\n\t&l\n\tt;\n\t</data>\n", "a=data:<"}),
    testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(
    SeveralLines, Reader,
    testing::Values(
        Row{"EndsInOneMoreLineEnd", "\t<key>a</key>\n\t<string>one\n\ttwo</string>\n", "a=string:one\rtwo\r"},
        Row{"EmptyOnTwoLines", "\t<key>a</key>\n\t<string>\n\t</string>\n\t<key>b</key>\n\t<true/>\n",
            "a=string:\r b=boolean:true"},
        Row{"OneElementOfAnArray",
            "\t<key>a</key>\n\t<array>\n\t\t<string>x\ny\n</string>\n\t\t<string>z</string>\n\t</array>\n",
            "a=[0=string:x\ry\r 1=string:z]"},
        Row{"AKeyInsideIsAKey", "\t<key>a</key>\n\t<string>x\n<key>b</key>\ny</string>\n", "a=string:(none)"},
        Row{"TheFirstLineIsLostBehindATag", "\t<key>a</key>\n\t<string>x<br>y\nz</string>\n", "a=string:z\r"}),
    testing::PrintToStringParamName());

// What a program that parses XML would read otherwise.
INSTANTIATE_TEST_SUITE_P(
    Misreadings, Reader,
    testing::Values(
        Row{"ACommentSwallowsTheNode", "\t<key>a</key>\n\t<true/>\n<!-- note -->\n\t<key>b</key>\n\t<true/>\n",
            "a=!-- note --:true"},
        Row{"BlanksDoNotIndent", "  <key>a</key>\n  <string>b</string>\n", "=  <key:(none)"},
        Row{"ADictionaryOnOneLineSwallowsWhatFollows",
            "\t<key>a</key>\n\t<dict></dict>\n\t<key>b</key>\n\t<true/>\n\t</dict>\n", "a={b=boolean:true}"},
        Row{"ASelfClosedValueSwallowsTheNode", "\t<key>a</key>\n\t<string/>\n\t<key>b</key>\n\t<true/>\n",
            "a=string:(none)"},
        Row{"TwoValuesOnALineOfAnArray", "\t<key>a</key>\n\t<array>\n\t\t<true/><string>x</string>\n\t</array>\n",
            "a=[0=string:x]"},
        Row{"ABlankLineInAnArrayCounts", "\t<key>a</key>\n\t<array>\n\t\t<true/>\n\n\t\t<true/>\n\t</array>\n",
            "a=[0=boolean:true 2=boolean:true]"},
        Row{"ASecondClosingTagOpensANode",
            "\t<key>a</key>\n\t<array>\n\t</array>\n\t</array>\n\t<key>b</key>\n\t<true/>\n", "a=[]"},
        Row{"AnEndInTheMiddleOfALineEndsNothing",
            "\t<key>a</key>\n\t<dict>\n\t</dict><key>b</key>\n\t<true/>\n\t</dict>\n", "a={b=boolean:true}"}),
    testing::PrintToStringParamName());

TEST(ReaderOfFiles, AMissingFileBeginsADocument) {
    const Documents documents;
    const auto document = documents.Open();
    EXPECT_TRUE(document->error);
    EXPECT_EQ(document->errorMessage.ToStd(), documents.Path() + " does not exist");
    document->root->SetString("a", "b");
    document->Save();
    EXPECT_EQ(documents.Text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n<dict>\n\t<key>a</key>\n\t<string>b</string>\n</dict>\n</plist>\n");
    EXPECT_THROW(New<plist>(Ref<FolderItem>()), NilObjectException);
}

TEST(ReaderOfFiles, WithoutTheTopDictionaryItIsNone) {
    const Documents documents;
    for (const std::string text :
         {"", "\n", "<plist>\n<array>\n</array>\n", "<plist>\n<dict/>\n", " <dict>\n", "bplist00\x01\x02", "BPLIST"}) {
        writeFile(documents.Path(), text);
        const auto document = documents.Open();
        EXPECT_TRUE(document->error) << text;
        EXPECT_EQ(document->errorMessage, "Not a plist file") << text;
        EXPECT_EQ(document->root->count(), 0);
    }
}
