// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "framework/core/threads/Dispatch.h"
#include "tests/app/AppTest.h"

namespace marrowbeck::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

class PreferencesTest : public AppTest {};

TEST_F(PreferencesTest, TheFirstRunMakesTheFoldersAndItsEndTheFile) {
    Preferences::LoadPreferences();
    for (const char* name : {"/temp", "/thumbnails"}) EXPECT_TRUE(fs::is_directory(folder + name)) << name;
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(Preferences::PreferenceFile()->AbsolutePath().ToStd(), file);
    EXPECT_THAT(Preferences::TempFile()->AbsolutePath().ToStd(),
                MatchesRegex(folder + "/temp/com\\.kv2tqq\\.marrowbeck\\.preferences\\.temp[0-9.e-]+\\.plist"));
    EXPECT_TRUE(Preferences::prefs()->root->GetBoolean("autoupdate", true));
    Preferences::SavePreferences();
    EXPECT_THAT(saved(), HasSubstr("\t<key>autoupdate</key>\n\t<true/>\n"));
    EXPECT_TRUE(fs::is_empty(folder + "/temp"));
    if (Preferences::PreferenceFile()->MacType().IsEmpty()) GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(Preferences::PreferenceFile()->MacType(), String("TEXT"));
    EXPECT_EQ(Preferences::PreferenceFile()->MacCreator(), String("ttxt"));
}

TEST_F(PreferencesTest, TheFoldersAreThePersonsAlone) {
    const std::string pictures = folder + "/../pictures";
    const auto rights = [](const std::string& name) { return static_cast<int>(fs::status(name).permissions()); };
    const mode_t before = ::umask(0);
    Preferences::LoadPreferences();
    ::umask(before);
    const std::string data = fs::path(folder).parent_path();
    for (const std::string& name : {data, folder, folder + "/temp", folder + "/thumbnails"}) {
        EXPECT_EQ(rights(name), 0700) << name;
        fs::permissions(name, fs::perms(0755));
    }
    // As an earlier version left them, the thumbnails in a folder of the person's choice.
    fs::create_directory(pictures);
    fs::permissions(pictures, fs::perms(0755));
    fs::remove(folder + "/thumbnails");
    fs::create_directory_symlink(pictures, folder + "/thumbnails");
    Preferences::LoadPreferences();
    for (const std::string& name : {folder, folder + "/temp"}) EXPECT_EQ(rights(name), 0700) << name;
    for (const std::string& name : {data, pictures}) EXPECT_EQ(rights(name), 0755) << name;
    fs::rename(folder, data + "/elsewhere");
    fs::create_directory_symlink(data + "/elsewhere", folder);
    fs::permissions(data + "/elsewhere", fs::perms(0755));
    Preferences::LoadPreferences();
    EXPECT_EQ(rights(data + "/elsewhere"), 0755);
}

TEST_F(PreferencesTest, WhatADeadRunLeftIsGoneBeforeTheDocumentIsRead) {
    remember("<key>lastfolder</key>\n<string>there</string>\n");
    fs::create_directories(folder + "/temp/deep/deeper");
    std::ofstream(folder + "/temp/com.kv2tqq.marrowbeck.preferences.temp1.plist") << "half";
    std::ofstream(folder + "/.new-Ab12Cd") << "half";
    Preferences::LoadPreferences();
    EXPECT_FALSE(fs::exists(folder + "/.new-Ab12Cd"));
    EXPECT_TRUE(fs::is_empty(folder + "/temp"));
    EXPECT_EQ(Preferences::prefs()->root->GetString("lastfolder"), String("there"));
    const String name = Preferences::TempFile()->Name();
    Preferences::LoadPreferences();
    EXPECT_NE(Preferences::TempFile()->Name(), name);
}

TEST_F(PreferencesTest, WhatIsNoPropertyListIsPutAsideWhole) {
    fs::create_directories(folder);
    const std::string nested = [] {
        std::string text = "<plist>\n<dict>\n";
        for (int i = 0; i < 100'000; ++i) text += "<key>k</key>\n<dict>\n";
        return text;
    }();
    std::string aside = file + " unreadable";
    int count = 1;
    for (const std::string& content : {std::string("no list"), std::string(), std::string("bplist00"), nested}) {
        std::ofstream(file, std::ios::binary) << content;
        messages.clear();
        Preferences::LoadPreferences();
        EXPECT_EQ(readFile(aside), content);
        EXPECT_THAT(messages, ElementsAre(HasSubstr(aside + ".")));
        aside = file + " unreadable " + std::to_string(++count);
        Preferences::prefs()->root->SetString("lastfolder", "there");
        Preferences::SavePreferences();
        messages.clear();
        Preferences::LoadPreferences();
        EXPECT_EQ(Preferences::prefs()->root->GetString("lastfolder"), String("there"));
        EXPECT_THAT(messages, IsEmpty());
    }
}

TEST_F(PreferencesTest, ASaveThatFailsIsToldAndLeavesTheFile) {
    remember("<key>lastfolder</key>\n<string>there</string>\n");
    const std::string before = saved();
    Preferences::LoadPreferences();
    fs::remove_all(folder + "/temp");
    std::ofstream(folder + "/temp") << "in the way";
    framework::Dispatch([] { Preferences::SavePreferences(); });
    EXPECT_THAT(messages, ElementsAre("The preferences could not be saved to " + file +
                                      ": there is no such folder. What was saved before is still there."));
    EXPECT_TRUE(Preferences::prefs()->error);
    EXPECT_EQ(saved(), before);
}

}  // namespace
}  // namespace marrowbeck::test
