// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Dictionary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "framework/core/objects/Exceptions.h"

using namespace framework;
using testing::ElementsAre;

namespace {

std::vector<std::string> keys(const Ref<Dictionary>& dictionary) {
    std::vector<std::string> result;
    for (int i = 0; i < dictionary->Count(); ++i) result.push_back(dictionary->Key(i).StringValue().ToStd());
    return result;
}

}  // namespace

TEST(Dictionary, findsKeysWithoutRegardToCase) {
    const Ref<Dictionary> headers = New<Dictionary>();
    headers->Value("Content-Length", 1);
    headers->Value("content-length", 2);
    headers->Value("É", 3);
    EXPECT_EQ(headers->Count(), 2);
    EXPECT_EQ(headers->Value("CONTENT-LENGTH").IntegerValue(), 2);
    EXPECT_TRUE(headers->HasKey("é"));
    EXPECT_THAT(keys(headers), ElementsAre("Content-Length", "É"));
    headers->Remove("cONTENT-lENGTH");
    headers->Value("content-length", 4);
    EXPECT_THAT(keys(headers), ElementsAre("É", "content-length"));
}

TEST(Dictionary, answersForAbsentKeys) {
    const Ref<Dictionary> dictionary = New<Dictionary>();
    EXPECT_THROW(dictionary->Value("a"), KeyNotFoundException);
    EXPECT_EQ(dictionary->Lookup("a", "stand-in").StringValue().ToStd(), "stand-in");
    dictionary->Value("a", Nil);
    EXPECT_TRUE(dictionary->Lookup("a", 1).IsNil());
    EXPECT_THROW(dictionary->Key(-1), OutOfBoundsException);
    EXPECT_THROW(dictionary->Key(1), OutOfBoundsException);
}

// Whatever is done in whatever order, the dictionary must agree with a plain list of pairs.
TEST(Dictionary, keepsOrderUnderRandomUse) {
    std::mt19937 random(11);
    const auto any = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int round = 0; round < 50; ++round) {
        const Ref<Dictionary> dictionary = New<Dictionary>();
        std::vector<std::pair<std::string, int>> expected;
        for (int step = 0; step < 400; ++step) {
            const std::string key = std::to_string(any(60));
            const auto found =
                std::find_if(expected.begin(), expected.end(), [&](const auto& pair) { return pair.first == key; });
            const int action = any(10);
            if (action < 4) {
                dictionary->Value(String(key), step);
                if (found == expected.end()) {
                    expected.emplace_back(key, step);
                } else {
                    found->second = step;
                }
            } else if (action < 7) {
                dictionary->Remove(String(key));
                if (found != expected.end()) expected.erase(found);
            } else if (!expected.empty()) {
                const int index = any(static_cast<int>(expected.size()));
                const auto& [name, value] = expected[static_cast<std::size_t>(index)];
                ASSERT_EQ(dictionary->Key(index).StringValue().ToStd(), name);
                ASSERT_EQ(dictionary->Value(String(name)).IntegerValue(), value);
            }
            ASSERT_EQ(dictionary->Count(), static_cast<int>(expected.size()));
        }
    }
}
