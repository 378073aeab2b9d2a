// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/SpecialFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "framework/core/files/ApplicationPaths.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

std::string path(const Ref<FolderItem>& item) {
    return item->AbsolutePath().ToStd();
}

}  // namespace

TEST(SpecialFolder, ApplicationDataIsWhereTheEnvironmentSays) {
    ::setenv("HOME", "/none/h\xFFme", 1);
    ::setenv("XDG_DATA_HOME", "/none/data", 1);
    EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/data");
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/h\xFFme/.local/share");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/h\xFFme/.local/share");
}

TEST(SpecialFolder, UserFoldersAreTheDesktopsOwn) {
    const TemporaryFolder folder;
    ::setenv("HOME", folder.Path().c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(path(SpecialFolder::Desktop()), folder.Path("Desktop"));
    EXPECT_EQ(path(SpecialFolder::Downloads()), folder.Path("Downloads"));
    EXPECT_EQ(path(SpecialFolder::Pictures()), folder.Path("Pictures"));

    folder.Put(".config/user-dirs.dirs",
               "# XDG_PICTURES_DIR=\"/commented\"\n"
               "XDG_DESKTOP_DIR=\"$HOME/Schreib \\\"tisch\\\"\"\n"
               "XDG_DOWNLOAD_DIR=\"/none/in\"\n"
               "  XDG_PICTURES_DIR=\"/none/\xE4 pics\"\n"
               "XDG_PICTURES_DIRECTORY=\"/other\"\n"
               "XDG_PICTURES_DIR=\"relative\"\n");
    EXPECT_EQ(path(SpecialFolder::Desktop()), folder.Path("Schreib \"tisch\""));
    EXPECT_EQ(path(SpecialFolder::Downloads()), "/none/in");
    EXPECT_EQ(path(SpecialFolder::Pictures()), "/none/\xE4 pics");
}

TEST(ApplicationPaths, FoldersLieBesideThatOfTheExecutableUnderTheProgramsName) {
    const std::filesystem::path prefix =
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() / "libexec";
    const std::filesystem::path tools = prefix / ("files-" + std::to_string(::getpid()));
    ApplicationPaths::SetName(String(tools.filename().string()));
    EXPECT_FALSE(ApplicationToolsFolder());
    std::filesystem::create_directories(tools);
    const Ref<FolderItem> found = ApplicationToolsFolder();
    std::filesystem::remove(tools);
    std::error_code inUse;
    std::filesystem::remove(prefix, inUse);
    ASSERT_TRUE(found);
    EXPECT_EQ(path(found), tools.string());
}
