// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/tools/RunTools.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tools/mime/MimeTypes.h"

namespace marrowbeck::tools {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::string_literals;
using namespace std::string_view_literals;

std::string value(const std::string& path, const std::string& attribute) {
    const ToolResult result = mdls({"-name", attribute, "-raw", path});
    EXPECT_EQ(result.status, exitSuccess) << result.error;
    return result.output;
}

struct HeaderCase {
    const char* name;
    const char* expected;  ///< bits, colour space, alpha, kind, height, width
};

const HeaderCase headerCases[] = {
    {"rgb.jpg", "32|RGB|0|JPEG image|32|48"},
    {"gray.jpg", "32|Gray|0|JPEG image|32|48"},
    {"cmyk.jpg", "32|CMYK|0|JPEG image|32|48"},
    {"orient6.jpg", "32|RGB|0|JPEG image|48|32"},
    {"alpha.png", "32|RGB|1|PNG image|32|48"},
    {"16-bit.png", "64|RGB|0|PNG image|32|48"},
    {"palette-transparent.png", "32|RGB|1|PNG image|32|48"},
    {"1-bit.png", "1|Gray|0|PNG image|32|48"},
    {"1x10k.png", "32|RGB|0|PNG image|10000|1"},
    {"16-bit-alpha.tif", "64|RGB|1|TIFF image|32|48"},
    {"bigtiff.tif", "32|RGB|0|TIFF image|32|48"},
    {"orient8.tif", "32|RGB|0|TIFF image|48|32"},
#ifdef MARROWBECK_HAS_LAB_TIFF
    {"lab.tif", "32|Lab|0|TIFF image|32|48"},
#else
    {"lab.tif", "(null)|(null)|(null)|TIFF image|32|48"},
#endif
    {"1-bit.tif", "1|Gray|0|TIFF image|32|48"},
    {"rgb.gif", "32|RGB|0|GIF image|32|48"},
    {"transparent.gif", "32|RGB|1|GIF image|32|48"},
    {"alpha.bmp", "32|RGB|1|Windows BMP image|32|48"},
    {"lossless-alpha.webp", "32|RGB|1|WebP image|32|48"},
    {"rgb.jp2", "32|RGB|0|JPEG-2000 JP2 image|32|48"},
    {"gray-16-bit.jp2", "64|Gray|0|JPEG-2000 JP2 image|32|48"},
    {"codestream.j2k", "32|RGB|0|JPEG-2000 codestream|32|48"},
    {"rgb.psd", "32|RGB|0|Photoshop image|32|48"},
    {"rgb.dds", "32|RGB|0|DirectDraw surface|32|48"},
    {"bitmap.pbm", "1|Gray|0|PBM image|32|48"},
    {"rgb.pict", "32|RGB|0|Macintosh Quickdraw/PICT drawing|32|48"},
    {"png-inside.ico", "32|RGB|0|Windows icon|32|48"},
    {"largest-last.ico", "32|RGB|1|Windows icon|32|48"},
    {"alpha.jxl", "32|RGB|1|JPEG XL image|32|48"},
    {"10-bit-alpha.avif", "40|RGB|1|AVIF image|32|48"},
    {"turned-twice.avif", "32|RGB|0|AVIF image|48|32"},
    {"late-exif.heic", "32|RGB|0|HEIF image|32|48"},  // it stands as the format says, not as its Exif does
};

TEST(Mdls, EveryKindTellsWhatItsHeaderSays) {
    for (const HeaderCase& header : headerCases) {
        const ToolResult result = mdls({"-name", "kMDItemPixelWidth", "-name", "kMDItemPixelHeight", "-name",
                                        "kMDItemColorSpace", "-name", "kMDItemBitsPerSample", "-name", "kMDItemKind",
                                        "-name", "kMDItemHasAlphaChannel", "-raw", picture(header.name)});
        std::string output = result.output;
        std::replace(output.begin(), output.end(), '\0', '|');
        EXPECT_EQ(output, header.expected) << header.name;
        EXPECT_EQ(result.status, exitSuccess) << header.name;
    }
}

TEST(Mdls, ProfilesAreNamedByTheirDescription) {
    for (const char* const name : {"profile.jpg", "profile.png", "profile.tif", "profile.webp"})
        EXPECT_EQ(value(picture(name), "kMDItemProfileName"), "Küste & Meer") << name;
    EXPECT_EQ(value(picture("huge-profile.png"), "kMDItemProfileName"), "Vast");
    for (const char* const name : {"rgb.jpg", "broken-profile.png", "bomb-profile.png"})
        EXPECT_EQ(value(picture(name), "kMDItemProfileName"), "(null)") << name;
}

TEST(Mdls, FactsAreFoundWhereFewLookForThem) {
    struct Case {
        const char* name;
        const char* attribute;
        const char* expected;
    };
    for (const Case& fact : {
             Case{"late-exif.heic", "kMDItemAcquisitionMake", "Marlowe"},
             Case{"late-exif.heic", "kMDItemFNumber", "2.8"},
             Case{"exif-in-xmp.gif", "kMDItemFNumber", "2.8"},
             Case{"exif-in-xmp.gif", "kMDItemEXIFVersion", "unknown"},
             Case{"exif-in-xmp.gif", "kMDItemDescription", "from a GIF"},
             Case{"texts.png", "kMDItemDescription", "Dünen"},
             Case{"texts.png", "kMDItemCopyright", "Ann Otter"},
             Case{"profile.psd", "kMDItemProfileName", "Küste & Meer"},
             Case{"latin1-profile.jpg", "kMDItemProfileName", "Küste im Winter bei leisem Regen"},
             // A mark at the beginning is no text; what looks the same is the same; a line is a keyword.
             Case{"marked-texts.jpg", "kMDItemDescription", "Möwe"},
             Case{"marked-texts.jpg", "kMDItemKeywords", "(\n    Mo\u0308we,\n    sea,\n    sky\n)"},
         })
        EXPECT_EQ(value(picture(fact.name), fact.attribute), fact.expected) << fact.name << " " << fact.attribute;
}

std::string cameraData(const std::string& path) {
    std::string output =
        mdls({"-name", "kMDItemExposureTimeSeconds", "-name", "kMDItemFNumber", "-name", "kMDItemFocalLength", "-name",
              "kMDItemISOSpeed", "-name", "kMDItemAcquisitionMake", "-name", "kMDItemAcquisitionModel", "-raw", path})
            .output;
    std::replace(output.begin(), output.end(), '\0', '|');
    return output;
}

TEST(Mdls, CameraDataIsPlainNumbers) {
    EXPECT_EQ(cameraData(picture("orient6.jpg")), "Marlowe|Field 7|0.004|2.8|50|400");
    EXPECT_EQ(value(picture("orient6.jpg"), "kMDItemEXIFVersion"), "2.31");
}

TEST(Mdls, CameraDataIsFoundWhereOlderTagsKeepIt) {
    EXPECT_EQ(cameraData(picture("apex.jpg")), "(null)|(null)|0.125|4|(null)|102400");
    EXPECT_EQ(value(picture("canon-speed.jpg"), "kMDItemISOSpeed"), "50");
    EXPECT_EQ(value(picture("nikon-speed.jpg"), "kMDItemISOSpeed"), "200");
}

TEST(Mdls, NumbersThatMakeNoSenseAreNoValues) {
    EXPECT_EQ(cameraData(picture("senseless-numbers.jpg")), "(null)|(null)|(null)|(null)|(null)|(null)");
    EXPECT_EQ(value(picture("senseless-numbers.jpg"), "kMDItemEXIFVersion"), "2.21");
}

TEST(Mdls, ExifVersionTellsWhetherThereIsExifData) {
    EXPECT_EQ(value(picture("no-exif-version.jpg"), "kMDItemEXIFVersion"), "unknown");
    EXPECT_EQ(value(picture("rgb.jpg"), "kMDItemEXIFVersion"), "(null)");
    EXPECT_EQ(value(picture("8-bit.tif"), "kMDItemEXIFVersion"), "(null)");  // its tags are those of every TIFF
}

TEST(Mdls, XmpGoesBeforeIptcAndIptcBeforeExif) {
    const std::string path = picture("xmp-before-iptc-before-exif.jpg");
    EXPECT_EQ(value(path, "kMDItemDescription"), "Hügel — 丘\nrear (null)");
    EXPECT_EQ(value(path, "kMDItemCopyright"), "© Ann Otter");
    EXPECT_EQ(value(path, "kMDItemKeywords"), "(\n    sea,\n    sky,\n    Möwe\n)");
}

TEST(Mdls, TextsAreUtf8WhateverTheFileHolds) {
    const std::string path = picture("latin1-iptc.jpg");
    EXPECT_EQ(value(path, "kMDItemDescription"), "Straße € 5");
    EXPECT_EQ(value(path, "kMDItemKeywords"), "(\n    Küste,\n    two words\n)");
    EXPECT_EQ(value(path, "kMDItemCopyright"), "Otter, Studio Mühle");
    EXPECT_EQ(value(picture("cyrillic-iptc.jpg"), "kMDItemDescription"), "море");
    EXPECT_EQ(value(picture("windows-texts.jpg"), "kMDItemDescription"), "Wörter");
    EXPECT_EQ(value(picture("windows-texts.jpg"), "kMDItemKeywords"), "(\n    sea,\n    sky\n)");
    EXPECT_EQ(value(picture("user-comment.jpg"), "kMDItemDescription"), "schön");
}

TEST(Mdls, ValuesStandInNameOrderWithNulsBetween) {
    const Arguments arguments{"-name", "kMDItemPixelWidth", "-name", "kMDItemUnheardOf",
                              "-name", "kMDItemColorSpace", "-raw",  picture("rgb.png")};
    EXPECT_EQ(mdls(arguments).output, std::string("RGB\0"
                                                  "48\0"
                                                  "(null)",
                                                  13));
    EXPECT_EQ(mdls({"-name", "kMDItemPixelWidth", "-name", "kMDItemColorSpace", picture("rgb.png")}).output,
              "kMDItemColorSpace = RGB\nkMDItemPixelWidth = 48\n");
    EXPECT_THAT(mdls({picture("rgb.png")}).output, HasSubstr("kMDItemProfileName = (null)\n"));
}

TEST(Mdls, AFileThatNoReaderSurvivesHasItsKindByName) {
    const Job job =
        std::get<Job>(Mdls().begin({"-name", "kMDItemKind", "-name", "kMDItemPixelWidth", "-raw", "a/b.png"}));
    EXPECT_EQ(job.finish(std::nullopt, std::nullopt).output, std::string("PNG image\0(null)", 16));
}

TEST(Mdls, AValueNeitherLooksLikeAnotherOneNorSteersATerminal) {
    const Job job = std::get<Job>(Mdls().begin({"-name", "kMDItemDescription", "-name", "kMDItemKind", "a.png"}));
    EXPECT_EQ(job.finish("kMDItemDescription\0one\r\nkMDItemKind = x\n\x1b[2Jy\r\u202ez\0"sv, std::nullopt).output,
              "kMDItemDescription = one\n    kMDItemKind = x\n    \ufffd[2Jy\ufffd\ufffdz\nkMDItemKind = (null)\n");
}

TEST(Mdls, OnlyWhatAReaderCanSayIsTakenForAnAnswer) {
    const std::string longest(65536, 'x');
    const std::pair<std::string, bool> cases[] = {
        {"", true},
        {"kMDItemCopyright\0a\nb\0kMDItemKind\0\0"s, true},
        {"kMDItemKind\0"s + longest + '\0', true},
        {"kMDItemKind\0"s + longest + "x\0"s, false},
        {"kMDItemKind\0x"s, false},
        {"kMDItemKind\0"s, false},
        {"kMDItemKind\0x\0y\0"s, false},
        {"kMDItemKind\0x\0kMDItemKind\0y\0"s, false},
        {"kMDItemKind\0x\0kMDItemCopyright\0y\0"s, false},
        {"kMDItemUnheardOf\0x\0"s, false},
        {"kMDItemKind\0x\xc3\0"s, false},
    };
    for (const auto& [answer, sound] : cases) EXPECT_EQ(Mdls().isSound({}, answer), sound) << answer.substr(0, 80);
}

TEST(Mdls, FilesThatMakeNoSenseHaveNoValuesAndAreNoFailure) {
    const TemporaryFolder folder;
    const std::string nothing = std::string("(null)\0(null)\0(null)", 20);
    for (const std::string& content :
         {std::string(), std::string("plainly no picture"), std::string(5000, '\0'), std::string("\xff\xd8\xff"),
          std::string("\x89PNG\r\n\x1a\n"), std::string("II*\0", 4), std::string(2000, '\xff')}) {
        const std::string path = folder.Put("senseless.jpg", content);
        const ToolResult result = mdls(
            {"-name", "kMDItemPixelWidth", "-name", "kMDItemEXIFVersion", "-name", "kMDItemKeywords", "-raw", path});
        EXPECT_EQ(result.output, nothing);
        EXPECT_EQ(result.status, exitSuccess);
        EXPECT_EQ(result.error, "");
    }
}

TEST(Mdls, OnlyAFileThatCannotBeOpenedIsAFailure) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe.jpg").c_str(), 0600), 0);
    for (const std::string& path : {folder.Path("none.jpg"), folder.Path(), folder.Path("pipe.jpg")}) {
        const ToolResult result = mdls({"-name", "kMDItemKind", "-raw", path});
        EXPECT_EQ(result.status, exitFailure);
        EXPECT_THAT(result.error, HasSubstr(path));
        EXPECT_THAT(result.output, IsEmpty());
    }
}

TEST(Mdls, WhatItDoesNotKnowIsRefused) {
    for (const Arguments& arguments : std::vector<Arguments>{
             {}, {"-raw"}, {"-plist", "-", "a.jpg"}, {"a.jpg", "b.jpg"}, {"-raw", ""}, {"a.jpg", "-name"}}) {
        const ToolResult result = mdls(arguments);
        EXPECT_EQ(result.status, exitUsage);
        EXPECT_THAT(result.error, HasSubstr("Usage"));
    }
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
