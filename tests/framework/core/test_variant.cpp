// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "framework/core/objects/Exceptions.h"

using namespace framework;

namespace {

class Thing : public Object {};

}  // namespace

static_assert(sizeof(Variant) == 16);
static_assert(!std::is_constructible_v<Variant, int*>);

TEST(Variant, turnsPlainValuesIntoEachOther) {
    EXPECT_EQ(Variant(2.5).StringValue().ToStd(), "2.5");
    EXPECT_EQ(Variant(RGB(1, 0, 255)).StringValue().ToStd(), "&h0100FF");
    EXPECT_EQ(Variant("&h0100FF").ColorValue(), RGB(1, 0, 255));
    EXPECT_EQ(Variant(RGB(1, 0, 255)).IntegerValue(), 0x100FF);
    EXPECT_EQ(Variant("42.9").IntegerValue(), 42);
    EXPECT_EQ(Variant(-2.9).IntegerValue(), -2);
    EXPECT_EQ(Variant(std::int64_t{1} << 40).IntegerValue(), 2147483647);
    EXPECT_EQ(Variant(std::nan("")).Int64Value(), 0);
    EXPECT_EQ(Variant((std::int64_t{1} << 53) + 1).StringValue().ToStd(), "9007199254740993");
    EXPECT_TRUE(Variant("TRUE").BooleanValue());
    EXPECT_FALSE(Variant("false").BooleanValue());
    EXPECT_FALSE(Variant().BooleanValue());
}

TEST(Variant, holdsObjectsAsTheyAre) {
    const Ref<Thing> thing = New<Thing>();
    const Variant variant = thing;
    EXPECT_EQ(As<Thing>(variant.ObjectValue()), thing);
    EXPECT_EQ(variant, Variant(thing));
    EXPECT_FALSE(variant == Variant(New<Thing>()));
    EXPECT_EQ(variant.KeyHash(), Variant(thing).KeyHash());
    EXPECT_EQ(Variant().ObjectValue(), Nil);
    EXPECT_THROW(variant.StringValue(), TypeMismatchException);
    EXPECT_THROW(variant.IntegerValue(), TypeMismatchException);
    EXPECT_THROW(Variant(1).ObjectValue(), TypeMismatchException);
}

TEST(Variant, equalsByValue) {
    const std::int64_t big = (std::int64_t{1} << 53) + 1;
    const std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const std::vector<Variant> numbers = {0, 0.5, 1, 1e300, big, static_cast<double>(big), most, 9223372036854775808.0};
    std::vector<Variant> values = {Variant(), false, "1", "a", "A", "é", "É", RGB(0, 0, 1)};
    values.insert(values.end(), numbers.begin(), numbers.end());
    for (const Variant& left : values) {
        EXPECT_TRUE(left == left);
        for (const Variant& right : values) {
            EXPECT_EQ(left == right, right == left);
            EXPECT_TRUE(!(left == right) || left.KeyHash() == right.KeyHash());
        }
    }
    EXPECT_TRUE(Variant(1) == Variant(1.0));
    EXPECT_TRUE(Variant("É") == Variant("é"));
    EXPECT_FALSE(Variant(1) == Variant("1"));
    EXPECT_FALSE(Variant(1) == Variant(true));
    EXPECT_FALSE(Variant(big) == Variant(static_cast<double>(big)));
    EXPECT_FALSE(Variant(most) == Variant(9223372036854775808.0));
}

// These numbers are parts of names of files that outlive the program, so they must never change.
TEST(VariantHash, staysTheSameForEver) {
    EXPECT_EQ(Variant("").Hash(), 1339080641);
    EXPECT_EQ(Variant("/home/me/Pictures/a\\ b.jpg").Hash(), -1635109491);
    EXPECT_EQ(Variant("\xFF").Hash(), 694589730);
    EXPECT_EQ(Variant(1).Hash(), -100908429);
}

TEST(VariantHash, goesByTheExactBytesOfATextAndNotByItsLabel) {
    EXPECT_NE(Variant("/a/Photo.jpg").Hash(), Variant("/a/photo.jpg").Hash());
    EXPECT_EQ(Variant(String("é", Encodings::Undefined)).Hash(), Variant("é").Hash());
    EXPECT_EQ(Variant("Photo").KeyHash(), Variant("pHOTO").KeyHash());
}
