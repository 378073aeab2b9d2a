// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mime/MimeTypes.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace marrowbeck::tools {
namespace {

TEST(MimeTypes, KindsFollowTheUsersLanguagesInTheirOrder) {
    struct Case {
        const char* locale;
        const char* languages;
        const char* kind;
    };
    for (const Case& wish : {Case{"C.UTF-8", "de", "JPEG image"}, Case{"de_DE.UTF-8", "", "JPEG-Bild"},
                             Case{"de_DE.UTF-8", "en:de", "JPEG image"}, Case{"de_DE.UTF-8", "fr_CA:de", "image JPEG"},
                             Case{"en_US.UTF-8", "xx:de_AT", "JPEG-Bild"}}) {
        setenv("LC_ALL", wish.locale, 1);
        setenv("LANGUAGE", wish.languages, 1);
        EXPECT_EQ(MimeTypes().kindOf("a.jpg", {}), wish.kind) << wish.locale << " " << wish.languages;
    }
    setenv("LC_ALL", "C.UTF-8", 1);
}

}  // namespace
}  // namespace marrowbeck::tools
