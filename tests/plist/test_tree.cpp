// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

TEST(Tree, AskingForAChildMakesIt) {
    const Documents documents;
    const auto root = documents.Open()->root;
    EXPECT_EQ(root->name, "root");
    const auto x = root->child("x");
    EXPECT_TRUE(root->Exists("X"));
    EXPECT_EQ(root->GetType("x"), "dict");
    EXPECT_EQ(root->child("X"), x);
    EXPECT_EQ(root->index(0), Nil);
    const auto zero = root->child("0");
    EXPECT_EQ(root->index(0), zero);
    EXPECT_FALSE(root->index(0)->isArray);
    root->SetString("a", "");
    EXPECT_EQ(root->count(), 3);
    EXPECT_THROW(root->GetType("missing"), KeyNotFoundException);
}

TEST(Tree, ErrorsTellTheDocumentAndTheNextSuccessClearsThem) {
    const Documents documents;
    const auto document = documents.Open();
    const auto root = document->root;
    EXPECT_TRUE(root->AddArray("a"));
    EXPECT_FALSE(root->AddArray("a"));
    EXPECT_TRUE(document->error);
    EXPECT_EQ(document->errorMessage, "Array exists: a already exists");
    root->AddChild("a");
    EXPECT_EQ(document->errorMessage, "Child exists: a already exists");
    EXPECT_TRUE(root->child("a")->CheckArray());
    EXPECT_FALSE(document->error);
    EXPECT_FALSE(root->CheckArray());
    EXPECT_EQ(document->errorMessage, "root is not an array");
    EXPECT_EQ(root->GetValue("a"), "");
    EXPECT_EQ(document->errorMessage, "Key a does not exist");

    const auto alone = New<plistDict>();
    alone->SetError(true, "nobody hears");
    alone->AppendString("x");
    EXPECT_EQ(alone->count(), 0);
}

TEST(Tree, ReferencesUpwardDoNotKeepAndDoNotDangle) {
    const Documents documents;
    auto document = documents.Open();
    const auto inner = document->root->child("a")->child("b");
    const auto middle = Ref<plistDict>(inner->parent);
    document->root->Remove("a");
    EXPECT_EQ(inner->AbsolutePath(), ":root:a:b");
    document = Nil;
    EXPECT_EQ(middle->parent, Nil);
    EXPECT_EQ(inner->parent, middle);
    inner->SetError(true, "the document is gone");
    EXPECT_THROW(inner->AbsolutePath(), NilObjectException);
}

TEST(Tree, DepthBeyondTheStackEndsInAnException) {
    constexpr int kDepth = 100'000;
    const Documents documents;
    const auto document = documents.Open();
    Ref<plistDict> node = document->root;
    for (int i = 0; i < kDepth; ++i) node = node->child("n");
    EXPECT_EQ(node->AbsolutePath().ByteCount(), std::size_t{5} + 2 * kDepth);
    node->SetString("leaf", "x");
    EXPECT_THROW(document->Save(), StackOverflowException);
    EXPECT_THROW(document->Find("x"), StackOverflowException);
    EXPECT_THROW(document->root->Copy("n", New<plistDict>()), StackOverflowException);
    node = Nil;
    document->root = Nil;

    std::string nested;
    for (int i = 0; i < kDepth; ++i) nested += "<key>n</key>\n<dict>\n";
    EXPECT_THROW(documents.Of(nested), StackOverflowException);
}

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
