// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/DownloadTarget.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;

namespace {

class DownloadTargetTest : public testing::Test {
  protected:
    DownloadTargetTest() {
        ::setenv("HOME", home_.Path().c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", home_.Path(".config").c_str(), 1);
    }

    TemporaryFolder home_;
};

}  // namespace

TEST_F(DownloadTargetTest, TakesNoPlaceButOnTheDesktop) {
    struct Case {
        const char* desktop;
        bool hasDownloads;
        std::string file;
        std::string place;
    };
    home_.Put("Desk/new.tar.gz", "earlier");
    home_.Put("new.tar.gz", "earlier");
    home_.Put("new (2).tar.gz", "earlier");
    std::filesystem::create_directory_symlink(home_.Path(), home_.Path("way home"));
    const Case cases[] = {
        {"$HOME/Desk", false, "Desk/new.tar.gz", "on your Desktop"},
        {"$HOME", false, "new (3).tar.gz", "in your home folder"},
        {"$HOME/", true, "Downloads/new.tar.gz", "in your download folder"},
        {"$HOME/way home/.", true, "Downloads/new.tar.gz", "in your download folder"},
        {"$HOME/none", true, "Downloads/new.tar.gz", "in your download folder"},
    };
    for (const Case& each : cases) {
        home_.Put(".config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"" + std::string(each.desktop) + "\"\n");
        if (each.hasDownloads) std::filesystem::create_directories(home_.Path("Downloads"));
        const DownloadTarget target("new.tar.gz");
        EXPECT_EQ(target.File()->AbsolutePath().Bytes(), home_.Path(each.file));
        EXPECT_EQ(target.Place().Bytes(), each.place);
        EXPECT_FALSE(target.File()->Exists()) << "what was there is set aside, if it may be replaced";
    }
    EXPECT_EQ(readFile(home_.Path("Desk/new.tar.gz")), "earlier");
}

TEST_F(DownloadTargetTest, NamesAreWhatTheySeem) {
    const std::pair<std::string, std::string> cases[] = {
        {"plain-1.2.tar", "plain-1.2.tar"},
        {".profile", "profile"},
        {"...", ""},
        {"", ""},
        {"\u202Egnp.exe", "gnp.exe"},
        {"a\u2066\u2069b\u202A.c", "ab.c"},
        {"\x01.\u202E.\r\n.x\x7Fy", "xy"},
        {"a\u2028b\u2029c\u0085d", "abcd"},
        {"\xFF\x85 raw \xE2", "\xFF\x85 raw \xE2"},
        {std::string("a\0b", 3), "ab"},
        {"שלום\u200F.txt", "שלום\u200F.txt"},
    };
    std::filesystem::create_directory(home_.Path("Desktop"));
    for (const auto& [given, expected] : cases) {
        const DownloadTarget target{String(given)};
        EXPECT_EQ(target.Name().Bytes(), expected);
        EXPECT_EQ(target.File() ? target.File()->Name().Bytes() : std::string_view(), expected);
    }
}

TEST_F(DownloadTargetTest, WhatItTookThePlaceOfIsBackUnlessTheDownloadIsWhole) {
    enum class End { NotComplete, CutShort, Whole };
    const std::string path = home_.Path("Desktop/x.tar");
    const std::string aside = home_.Path("Desktop/x (earlier 2).tar");
    home_.Put("Desktop/x (earlier).tar", "another file");
    home_.Put("elsewhere", "earlier");
    for (const End end : {End::NotComplete, End::CutShort, End::Whole}) {
        for (const bool isLink : {false, true}) {
            std::filesystem::remove(path);
            if (isLink) {
                std::filesystem::create_symlink("../elsewhere", path);
            } else {
                home_.Put("Desktop/x.tar", "earlier");
            }
            {
                DownloadTarget target("x.tar");
                EXPECT_EQ(readFile(aside), "earlier");
                home_.Put("Desktop/x.tar", "new");
                if (end != End::NotComplete) target.Complete(end == End::Whole);
                EXPECT_EQ(readFile(target.File()->AbsolutePath().ToStd()), "new");
            }
            EXPECT_EQ(readFile(path), end == End::Whole ? "new" : "earlier");
            EXPECT_EQ(std::filesystem::is_symlink(path), isLink && end != End::Whole);
            EXPECT_FALSE(std::filesystem::exists(aside));
        }
    }
    EXPECT_EQ(readFile(home_.Path("elsewhere")), "earlier");
    EXPECT_EQ(readFile(home_.Path("Desktop/x (earlier).tar")), "another file");
    std::filesystem::create_directory(home_.Path("Desktop/folder"));
    EXPECT_TRUE(DownloadTarget("folder").File()->Directory()) << "it fails the download";
}
