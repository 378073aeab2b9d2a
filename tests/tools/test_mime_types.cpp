// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mime/MimeTypes.h"

#include <gmock/gmock.h>

#include <QMimeDatabase>
#include <cstdlib>

#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

Content contentOf(const std::string& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

std::string nothing() {
    return {};
}

TEST(MimeTypes, WhatIsRememberedOfANameIsWhatItsDatabaseSays) {
    MimeTypes types;
    // Each after others whose end is partly the same.
    for (const char* const name :
         {"a.jpg", "b.c.jpg", "IMG_1.2.jpg", "a.JPG", "x.gz", "x.svg.gz", "x.tar.gz", "svg.gz", "a.C", "a.c",
          "Makefile", "x.Makefile", "a.tif", "jpg", "..jpg", "a.png.gz", "x.nef", "x.", "latin \xe9.png"}) {
        const QMimeType asked = QMimeDatabase().mimeTypesForFileName(QString::fromUtf8(name)).value(0);
        const std::string known = asked.name().toStdString();
        for (int round = 0; round < 2; ++round) EXPECT_EQ(types.typeByName(name, nothing), known) << name;
    }
}

TEST(MimeTypes, ASearchAsksTheNameFirstAndTheKindAsksTheContent) {
    MimeTypes types;
    const std::string png = readFile(picture("rgb.png"));
    EXPECT_EQ(types.typeByName("picture.jpg", [&] { return png; }), "image/jpeg");
    EXPECT_EQ(types.typeByName("picture", [&] { return png; }), "image/png");
    EXPECT_TRUE(types.isImage("image/x-canon-cr2") && types.isImage("video/x-mjpeg"));
    EXPECT_FALSE(types.isImage("application/pdf") || types.isImage(""));
    EXPECT_EQ(types.kindOf("picture.jpg", contentOf(png)), "PNG image");
    EXPECT_EQ(types.kindOf("raw.nef", contentOf(readFile(picture("8-bit.tif")))), "Nikon NEF raw image");
    EXPECT_EQ(types.kindOf("picture.jpg", contentOf("nothing known")), "JPEG image");
    EXPECT_EQ(types.kindOf("picture.jpg", {}), "JPEG image");
    EXPECT_EQ(types.kindOf("nothing", contentOf(std::string(9, '\0'))), "");
}

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
