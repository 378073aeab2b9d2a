// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

TEST(Search, GoesThroughTheTreeInDepthAndRemembersItsHits) {
    const Documents documents;
    const auto document = documents.Open();
    const auto root = document->root;
    EXPECT_THROW(document->Find("x"), KeyNotFoundException);

    root->SetString("needle key", "nothing");
    root->child("inner")->SetString("first", "a NEEDLE here");
    root->SetData("second", "needle");
    EXPECT_FALSE(document->Find("absent"));
    EXPECT_EQ(document->foundDict, Nil);

    EXPECT_TRUE(document->Find("needle"));
    EXPECT_EQ(document->foundDict, root->child("inner"));
    EXPECT_EQ(document->foundKey, "first");
    EXPECT_TRUE(document->foundValue.SameBytes("a NEEDLE here"));
    EXPECT_TRUE(document->FindNext("needle"));
    EXPECT_EQ(document->foundKey, "second");
    EXPECT_EQ(document->foundType, "data");
    EXPECT_FALSE(document->FindNext("needle"));
    EXPECT_EQ(document->foundKey, "second");

    root->child("inner")->SetString("first", "another needle");
    EXPECT_TRUE(document->FindNext("needle"));
    EXPECT_EQ(document->foundKey, "first");

    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(document->FindNext("need"));
        EXPECT_EQ(document->foundKey, "first");
    }
    root->SetBoolean("flag", true);
    EXPECT_TRUE(document->Find("TRUE"));
    EXPECT_EQ(document->foundKey, "flag");
    root->AddChild("empty");
    EXPECT_THROW(document->ClearSearch(root), KeyNotFoundException);
}
