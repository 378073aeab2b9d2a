// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

class Edits : public testing::Test {
  protected:
    Edits() {
        document = documents.Of(
            "\t<key>s</key>\n\t<string>x</string>\n\t<key>i</key>\n\t<integer>5.7</integer>\n"
            "\t<key>r</key>\n\t<real>1.25</real>\n\t<key>w</key>\n\t<double>1</double>\n"
            "\t<key>d</key>\n\t<date>2024-02-03T04:05:06Z</date>\n\t<key>n</key>\n\t<array>\n\t\t<string>e</string>\n"
            "\t\t<true/>\n\t</array>\n");
        root = document->root;
        dest = root->child("dest");
    }
    std::string error() const { return document->error ? document->errorMessage.ToStd() : ""; }

    Documents documents;
    Ref<plist> document;
    Ref<plistDict> root;
    Ref<plistDict> dest;
};

Ref<plistDict> arrayOf(const Ref<plistDict>& root, const std::string& strings) {
    root->AddArray("array");
    const auto array = root->child("array");
    for (const char c : strings) array->AppendString(String(std::string(1, c)));
    return array;
}

}  // namespace

TEST_F(Edits, CarryValuesThroughTheirTextForms) {
    for (const char* key : {"s", "i", "r", "w", "d", "n"}) root->Copy(key, dest);
    EXPECT_EQ(outline(dest),
              "s=string:x i=integer:5 r=real:1.3 d=date:2024-02-03 04:05:06 n={0=string:e 1=boolean:true}");
    root->Move("s", dest, true, "t");
    EXPECT_FALSE(root->Exists("s"));
    EXPECT_EQ(dest->GetString("t"), "x");
    root->Move("w", dest);
    EXPECT_FALSE(root->Exists("w"));
    EXPECT_FALSE(dest->Exists("w"));
    // What does not fit is lost.
    root->Move("r", dest, true, "t");
    EXPECT_EQ(dest->GetType("t"), "string");
    EXPECT_FALSE(root->Exists("r"));
    // An existing node takes the entries in.
    dest->child("n")->SetString("kept", "y");
    root->Move("n", dest);
    EXPECT_EQ(outline(dest->child("n")), "0=string:e 1=boolean:true kept=string:y");
}

TEST_F(Edits, RefuseWhatCannotBe) {
    root->Move("s", Nil);
    EXPECT_EQ(error(), "Destination is nil");
    root->Copy("missing", dest);
    EXPECT_EQ(error(), "Source does not exist.");
    root->Rename("s", "i");
    EXPECT_EQ(error(), "Key i already exists.");
    root->Rename("s", "new");
    EXPECT_EQ(error(), "");
    EXPECT_EQ(root->GetString("new"), "x");
    EXPECT_FALSE(root->Exists("s"));
    EXPECT_THROW(dest->Move("n", dest->child("n")->child("below")), StackOverflowException)
        << "a node into itself has no end";
}

TEST_F(Edits, RemoveByKey) {
    root->SetString("s", "y");
    root->Remove("S");
    root->Remove("n");
    root->Remove("12");
    EXPECT_FALSE(root->Exists("s"));
    EXPECT_TRUE(root->searched->HasKey("s"));
    EXPECT_EQ(root->child("n")->count(), 0) << "the old node is gone, so a new one is made";
}

TEST_F(Edits, RemoveByNumberClosesTheGap) {
    const auto array = arrayOf(root, "abcd");
    array->Remove(0);
    array->Remove(1);
    EXPECT_EQ(outline(array), "0=string:b 1=string:d");
    document->Save();
    EXPECT_NE(documents.Entries().find("<string>b</string>\n\t\t<string>d</string>\n\t</array>"), std::string::npos);
    EXPECT_THROW(array->Remove(2), KeyNotFoundException);
    EXPECT_EQ(error(), "Subscript out of range");
    EXPECT_THROW(array->Remove(-1), KeyNotFoundException);
    root->Remove(0);
    EXPECT_EQ(error(), "root is not an array");
    array->Remove(1);
    array->Remove(0);
    EXPECT_EQ(array->count(), 0);
}

TEST_F(Edits, AnArrayWithHolesCanBeGoneThrough) {
    const auto array = arrayOf(root, "a");
    for (const char* key : {"5", "6"}) array->SetString(key, key);
    array->Remove(5);
    EXPECT_EQ(outline(array), "0=string:a 6=string:6");
    document->Save();
    Array<String> strings;
    root->GetList("array", strings, 0);
    EXPECT_EQ(strings.Ubound(), 1);
    EXPECT_EQ(strings(1), "");
}
