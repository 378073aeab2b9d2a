// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/tools/RunTools.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>

namespace marrowbeck::tools {
namespace {

/// A colour as a test says it, and how far a picture may be from it in each channel.
struct Expected {
    int red, green, blue;
    int alpha = 255;
    int tolerance = 3;
};

::testing::AssertionResult isColour(const QImage& image, int x, int y, const Expected& expected) {
    const QColor found = image.pixelColor(x, y);
    const auto near = [&](int one, int other) { return std::abs(one - other) <= expected.tolerance; };
    const bool alike = near(found.red(), expected.red) && near(found.green(), expected.green) &&
                       near(found.blue(), expected.blue) && near(found.alpha(), expected.alpha);
    if (alike) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "at " << x << "," << y << ": " << found.red() << " " << found.green() << " "
                                         << found.blue() << " " << found.alpha();
}

constexpr Expected tomato{255, 99, 71};
constexpr Expected navy{0, 0, 128};
constexpr Expected halfTomato{255, 99, 71, 128};
constexpr Expected halfNavy{0, 0, 128, 128};
constexpr Expected lightGray{130, 130, 130};
constexpr Expected darkGray{9, 9, 9};
constexpr Expected red{255, 0, 0};
constexpr Expected fewColours{226, 88, 77};
constexpr Expected lossyTomato{255, 99, 71, 255, 8};
constexpr Expected lossyNavy{0, 0, 128, 255, 8};
constexpr Expected tomatoOfInk{250, 107, 76, 255, 9};
constexpr Expected navyOfInk{26, 34, 85, 255, 45};

struct Kind {
    const char* name;
    Expected top;
    Expected bottom;
    QSize size = {48, 32};
};

const Kind kinds[] = {
    {"rgb.jpg", tomato, navy},
    {"gray.jpg", lightGray, darkGray},
    {"progressive.jpg", tomato, navy},
    {"cmyk.jpg", tomatoOfInk, navyOfInk},
    {"interlaced.png", tomato, navy},
    {"alpha.png", halfTomato, halfNavy},
    {"16-bit-alpha.png", halfTomato, halfNavy},
    {"1-bit.png", {255, 255, 255}, {0, 0, 0}},
    {"gray-16-bit-alpha.png", {130, 130, 130, 128}, {9, 9, 9, 128}},
    {"palette-transparent.png", fewColours, {255, 255, 255, 0}},
    {"16-bit-alpha.tif", halfTomato, halfNavy},
    {"tiled.tif", tomato, navy},
    {"16-bit.tif", tomato, navy},
    {"big-endian.tif", tomato, navy},
    {"bigtiff.tif", tomato, navy},
    {"32-bit.tif", tomato, navy},
#ifdef MARROWBECK_HAS_LAB_TIFF
    {"lab.tif", {255, 99, 71, 255, 16}, {0, 0, 128, 255, 42}},  // few bits, and no more than other programs make of it
#endif
    {"cmyk.tif", tomatoOfInk, navyOfInk},
    {"16-bit-cmyk.tif", tomatoOfInk, navyOfInk},
    {"1-bit.tif", {255, 255, 255}, {0, 0, 0}},
    {"pages.tif", red, red},
    {"rgb.gif", fewColours, navy},
    {"transparent.gif", fewColours, {0, 0, 0, 0}},
    {"animation.gif", red, red},
    {"lossy.webp", lossyTomato, lossyNavy},
    {"lossless-alpha.webp", halfTomato, halfNavy},
    {"animation.webp", red, red},
    {"alpha.bmp", halfTomato, halfNavy},
    {"rgb.jp2", tomato, navy},
    {"gray-16-bit.jp2", lightGray, darkGray},
    {"codestream.j2k", tomato, navy},
    {"levels.jp2", tomato, navy, {480, 320}},
    {"rgb.psd", tomato, navy},
    {"rgb.tga", tomato, navy},
    {"rgb.pcx", tomato, navy},
    {"rgb.ppm", tomato, navy},
    {"rgb.xpm", {245, 95, 72, 255, 20}, {10, 4, 124, 255, 20}},
    {"rgb.pict", tomato, navy},
    {"png-inside.ico", tomato, navy},
    {"largest-last.ico", tomato, navy},
    {"alpha.jxl", {255, 99, 71, 128, 12}, {0, 0, 128, 128, 12}},
    {"10-bit-alpha.avif", {255, 99, 71, 128, 16}, {0, 0, 128, 128, 16}},
    // Colours are those of the profile, where it makes sense.
    {"red-for-blue.jpg", {71, 99, 255}, {128, 0, 0}},
    {"red-for-blue.png", {71, 99, 255}, {128, 0, 0}},
    {"red-for-blue.tif", {71, 99, 255}, {128, 0, 0}},
    {"red-for-blue.webp", {71, 99, 255, 255, 8}, {128, 0, 0, 255, 8}},
    {"broken-profile.png", tomato, navy},
    {"bomb-profile.png", tomato, navy},
};

TEST(Sips, EveryKindKeepsItsSizeAndItsColours) {
    for (const Kind& kind : kinds) {
        const QImage image = preview(picture(kind.name));
        EXPECT_EQ(image.size(), kind.size) << kind.name;
        if (image.isNull()) continue;
        EXPECT_TRUE(isColour(image, kind.size.width() / 2, 0, kind.top)) << kind.name;
        EXPECT_TRUE(isColour(image, kind.size.width() / 2, kind.size.height() - 1, kind.bottom)) << kind.name;
    }
}

TEST(Sips, ATargaFileBeginsAtTheCornerThatItNames) {
    const TemporaryFolder folder;
    std::string content = readFile(picture("rgb.tga"));
    content.at(17) = 0x20;
    EXPECT_TRUE(isColour(preview(folder.Put("from-the-top.tga", content)), 24, 0, navy));
}

TEST(Sips, WhatIsLeftOfAPictureIsShown) {
    const TemporaryFolder folder;
    const std::pair<const char*, std::string> wholes[] = {
        {"rgb.jpg", readFile(picture("rgb.jpg"))},
        {"lossy.webp", readFile(picture("lossy.webp"))},
        {"directory-first.tif", readFile(picture("directory-first.tif"))},
    };
    for (const auto& [name, whole] : wholes) {
        const QImage image = preview(folder.Put("cut short", whole.substr(0, whole.size() * 3 / 4)));
        ASSERT_EQ(image.size(), QSize(48, 32)) << name;
        EXPECT_TRUE(isColour(image, 24, 0, {255, 99, 71, 255, 16})) << name;
    }
}

TEST(Sips, WrongColoursAreWorseThanNone) {
    EXPECT_TRUE(preview(picture("gray.psd")).isNull());
    EXPECT_TRUE(preview(picture("cmyk.psd")).isNull());
}

/// The four corners, from left to right and down, as letters.
std::string cornersOf(const QImage& image) {
    std::string letters;
    for (const int y : {2, image.height() - 3}) {
        for (const int x : {2, image.width() - 3}) {
            if (isColour(image, x, y, {255, 0, 0, 255, 12})) letters += 'R';
            if (isColour(image, x, y, {0, 255, 0, 255, 12})) letters += 'G';
            if (isColour(image, x, y, {0, 0, 255, 255, 12})) letters += 'B';
            if (isColour(image, x, y, {255, 255, 255, 255, 12})) letters += 'W';
        }
    }
    return letters;
}

TEST(Sips, StandsUprightWhateverExifSays) {
    const std::string whole = readFile(picture("corners.jpg"));
    const std::string upright[] = {"RGBW", "RGBW", "GRWB", "WBGR", "BWRG", "RBGW", "BRWG", "WGBR", "GWRB", "RGBW"};
    const TemporaryFolder folder;
    for (size_t orientation = 0; orientation < std::size(upright); ++orientation) {
        using namespace std::string_literals;
        const std::string exif =
            "\xff\xe1\0\x22"
            "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s +
            static_cast<char>(orientation) + "\0\0\0\0\0\0"s;
        const std::string path = folder.Put("turned.jpg", whole.substr(0, 2) + exif + whole.substr(2));
        const bool onItsSide = orientation >= 5 && orientation <= 8;
        EXPECT_EQ(preview(path).size(), onItsSide ? QSize(32, 48) : QSize(48, 32)) << orientation;
        EXPECT_EQ(cornersOf(preview(path)), upright[orientation]) << orientation;
        EXPECT_EQ(preview(path, 24).size(), onItsSide ? QSize(16, 24) : QSize(24, 16)) << orientation;
    }
}

TEST(Sips, StandsUprightInEveryFormatThatSaysHow) {
    for (const char* const name : {"orient6.jpg", "orient6.png", "orient6.webp", "orient6.jp2"}) {
        const QImage image = preview(picture(name));
        ASSERT_EQ(image.size(), QSize(32, 48)) << name;
        EXPECT_TRUE(isColour(image, 0, 24, navy)) << name;
        EXPECT_TRUE(isColour(image, 31, 24, tomato)) << name;
    }
    // Where the format itself says how, what Exif says besides does not count.
    EXPECT_EQ(preview(picture("turned-twice.avif")).size(), QSize(32, 48));
    EXPECT_EQ(preview(picture("late-exif.heic")).size(), QSize(48, 32));
    const QImage image = preview(picture("orient8.tif"));
    ASSERT_EQ(image.size(), QSize(32, 48));
    EXPECT_TRUE(isColour(image, 0, 24, tomato));
    EXPECT_TRUE(isColour(image, 31, 24, navy));
}

TEST(Sips, KeepsProportionsAndNeverEnlarges) {
    const struct {
        QSize size;
        int side;
        QSize expected;
    } cases[] = {
        {{400, 300}, 240, {240, 180}}, {{300, 400}, 240, {180, 240}}, {{240, 240}, 240, {240, 240}},
        {{241, 10}, 240, {240, 10}},   {{241, 240}, 240, {240, 239}}, {{100, 50}, 240, {100, 50}},
        {{1, 1}, 240, {1, 1}},         {{1, 10'000}, 240, {1, 240}},  {{10'000, 1}, 240, {240, 1}},
        {{400, 300}, 1, {1, 1}},       {{400, 300}, 0, {400, 300}},   {{5000, 2500}, 0, {largestSide, largestSide / 2}},
        {{64, 48}, 99'999, {64, 48}},
    };
    const TemporaryFolder folder;
    for (const auto& [size, side, expected] : cases) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        for (const char* const format : {"png", "jpg", "tif", "bmp"}) {
            const std::string path = folder.Path("picture.") + format;
            ASSERT_TRUE(image.save(QString::fromStdString(path))) << path;
            EXPECT_EQ(preview(path, side).size(), expected) << format << " " << size.width() << "x" << size.height();
        }
    }
}

TEST(Sips, APictureWithSmallerOnesInsideIsNotTakenForThose) {
    EXPECT_EQ(preview(picture("levels.jp2"), 240).size(), QSize(240, 160));
    EXPECT_EQ(preview(picture("levels.jp2"), 481).size(), QSize(480, 320));
}

TEST(Sips, TheFileIsReadableAsPngAndSaysItsColoursAreOrdinary) {
    const TemporaryFolder folder;
    const std::string target = folder.Path("preview.jpg");
    ASSERT_EQ(sips({"-s", "format", "png", picture("red-for-blue.jpg"), "--out", target}).status, exitSuccess);
    const std::string png = readFile(target);
    EXPECT_TRUE(png.starts_with("\x89PNG\r\n\x1a\n"));
    EXPECT_EQ(png.find("iCCP"), std::string::npos);
    EXPECT_FALSE(QImage(QString::fromStdString(target), "png").hasAlphaChannel());
}

}  // namespace
}  // namespace marrowbeck::tools
