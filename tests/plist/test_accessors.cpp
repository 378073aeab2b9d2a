// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

class Accessors : public testing::Test {
  protected:
    std::string error() const { return document->error ? document->errorMessage.ToStd() : ""; }
    std::string text(const char* key) const { return root->values->Value(key).StringValue().ToStd(); }

    Documents documents;
    Ref<plist> document = documents.Open();
    Ref<plistDict> root = document->root;
};

Ref<Date> dateOf(const char* text) {
    auto date = New<Date>();
    date->SQLDateTime(text);
    return date;
}

}  // namespace

TEST_F(Accessors, ReadingAMissingKeyCreatesIt) {
    EXPECT_EQ(root->GetString("string", "x"), "x");
    EXPECT_EQ(root->GetData("data", "x"), "x");
    EXPECT_EQ(root->GetInteger("integer", 7), 7);
    EXPECT_EQ(root->GetDouble("double", 1.5), 1.5);
    EXPECT_EQ(root->GetReal("real", -2.5), -2.5);
    EXPECT_TRUE(root->GetBoolean("boolean"));
    EXPECT_EQ(root->GetDate("date", dateOf("2024-02-29 01:02:03"))->SQLDateTime(), "2024-02-29 01:02:03");
    EXPECT_EQ(root->GetColor("color", RGB(1, 0xAB, 255)), RGB(1, 0xAB, 255));
    EXPECT_EQ(outline(root),
              "string=string:x data=string:x integer=integer:7 double=real:1.5 real=real:-2.5 boolean=boolean:true "
              "date=date:2024-02-29 01:02:03 color=string:01ABFF");
    EXPECT_EQ(error(), "");
}

TEST_F(Accessors, NumbersAreReadFromAnyLeafButADate) {
    root->SetString("s", "12.6");
    EXPECT_EQ(root->GetInteger("s"), 12);
    EXPECT_EQ(root->GetDouble("s"), 12.6);
    EXPECT_EQ(root->GetType("s"), "string");
    root->SetDate("d", New<Date>());
    EXPECT_EQ(root->GetInteger("d"), -1);
    EXPECT_EQ(error(), "Type Mismatch: d is a date");
    EXPECT_EQ(root->GetDouble("d"), -1.0);
    EXPECT_EQ(root->GetReal("d"), -1.0);
    root->AddChild("c");
    EXPECT_EQ(root->GetInteger("c"), 0);
    EXPECT_EQ(error(), "Illegal Type: c is a dict");
    EXPECT_FALSE(root->GetBoolean("c"));
    EXPECT_EQ(error(), "Type Mismatch: c is a dict");
    EXPECT_EQ(root->GetColor("d"), RGB(0, 0, 0));
    EXPECT_EQ(error(), "Type Mismatch: d is a date");
    EXPECT_EQ(root->GetString("s"), "12.6");
    EXPECT_EQ(error(), "");
}

TEST_F(Accessors, AKeyKeepsItsTypeExceptForData) {
    root->SetString("a", "x");
    root->SetInteger("a", 5);
    EXPECT_EQ(error(), "Type Mismatch: a is a string");
    EXPECT_EQ(text("a"), "x");
    root->indexOf = 5;
    root->SetColor("n", RGB(0, 0, 0));
    EXPECT_EQ(root->indexOf, -1);
    root->indexOf = 5;
    root->SetBoolean("a", true);
    EXPECT_EQ(root->indexOf, -1);
    EXPECT_EQ(text("a"), "x");
    root->SetData("a", "YQ==");
    EXPECT_EQ(root->GetType("a"), "data");
}

TEST_F(Accessors, RealsKeepOneDecimalAndSetRealWritesOnce) {
    root->SetDouble("d", 2.25);
    EXPECT_EQ(root->GetDouble("d"), 2.3);
    root->SetDouble("d", -0.04);
    EXPECT_EQ(root->GetDouble("d"), 0.0);
    root->SetReal("r", 1.5);
    root->SetReal("r", 2.5);
    EXPECT_EQ(error(), "Type Mismatch: r is a real");
    EXPECT_EQ(text("r"), "1.5");
    root->SetInteger("i", -1234567.5);
    EXPECT_EQ(text("i"), "-1234568");
    root->types->Value("double", "double");
    root->SetReal("double", 3);
    EXPECT_EQ(root->GetType("double"), "real");
}

TEST_F(Accessors, ArraysNumberTheirElements) {
    root->AddArray("a");
    const auto array = root->child("a");
    array->indexOf = 17;
    array->AppendString("s");
    array->AppendInteger(-3);
    array->AppendDouble(1.0 / 3);
    array->AppendBoolean(false);
    array->AppendDate(dateOf("2024-02-03 04:05:06"));
    array->AppendData("YQ==");
    array->AppendColor(RGB(0, 0, 255));
    array->AppendDict();
    array->AppendArray();
    EXPECT_EQ(outline(array),
              "0=string:s 1=integer:-3 2=double:0.3333333333333333 3=boolean:false 4=date:2024-02-03T04:05:06Z "
              "5=data:YQ== 6=string:00FF 7={} 8=[]");
    EXPECT_EQ(array->indexOf, 8);
    EXPECT_EQ(array->index(7)->name, "");
    EXPECT_EQ(array->index(8)->name, "8");
    root->AppendString("x");
    EXPECT_EQ(error(), "root is not an array");
    EXPECT_EQ(root->count(), 1);
}
