// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ShowURL.h"

#include <gtest/gtest.h>

#include "framework/core/process/ActivationToken.h"
#include "tests/support/RecordingOpener.h"

using namespace framework;

TEST(ShowURL, HandsTheUrlToTheDesktopAsOneWord) {
    const marrowbeck::test::RecordingOpener opener;
    EXPECT_TRUE(ShowURL("http://host/a?b=c&d=$(id);'x y'"));
    EXPECT_EQ(opener.Call(), "http://host/a?b=c&d=$(id);'x y'\n");
    internal::SetActivationTokenMaker([] { return "right"; });
    EXPECT_TRUE(ShowURL("http://host/"));
    EXPECT_EQ(opener.Call(), "http://host/\nright\n");
    internal::SetActivationTokenMaker({});
}

TEST(ShowURL, IsFalseWhenNothingCanBeStarted) {
    EXPECT_FALSE(ShowURL(""));
    EXPECT_FALSE(ShowURL("--version"));
    ::setenv("PATH", "/none", 1);
    EXPECT_FALSE(ShowURL("http://host/"));
}
