// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/SpecialFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "framework/core/files/ApplicationPaths.h"
#include "framework/core/files/Volume.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

/// Sets a variable of the environment, or takes it out, while it lives.
class Environment {
  public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) {
            old_ = old;
            wasSet_ = true;
        }
        set(value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { set(wasSet_ ? old_.c_str() : nullptr); }

  private:
    void set(const char* value) { value ? ::setenv(name_, value, 1) : ::unsetenv(name_); }

    const char* name_;
    std::string old_;
    bool wasSet_ = false;
};

std::string path(const Ref<FolderItem>& item) {
    return item->AbsolutePath().ToStd();
}

}  // namespace

TEST(SpecialFolder, ApplicationDataIsWhereTheEnvironmentSays) {
    const Environment home("HOME", "/none/h\xFFme");
    {
        const Environment data("XDG_DATA_HOME", "/none/data");
        EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/data");
    }
    {
        const Environment data("XDG_DATA_HOME", "relative");
        EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/h\xFFme/.local/share");
    }
    const Environment data("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(path(SpecialFolder::ApplicationData()), "/none/h\xFFme/.local/share");
}

TEST(SpecialFolder, UserFoldersAreTheDesktopsOwn) {
    const TemporaryFolder folder;
    const Environment home("HOME", folder.Path().c_str());
    const Environment config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(path(SpecialFolder::Desktop()), folder.Path("Desktop"));
    EXPECT_EQ(path(SpecialFolder::Pictures()), folder.Path("Pictures"));

    std::filesystem::create_directory(folder.Path(".config"));
    folder.Put(".config/user-dirs.dirs",
               "# XDG_PICTURES_DIR=\"/commented\"\n"
               "XDG_DESKTOP_DIR=\"$HOME/Schreib \\\"tisch\\\"\"\n"
               "  XDG_PICTURES_DIR=\"/none/\xE4 pics\"\n"
               "XDG_PICTURES_DIRECTORY=\"/other\"\n"
               "XDG_PICTURES_DIR=\"relative\"\n");
    EXPECT_EQ(path(SpecialFolder::Desktop()), folder.Path("Schreib \"tisch\""));
    EXPECT_EQ(path(SpecialFolder::Pictures()), "/none/\xE4 pics");
}

TEST(ApplicationPaths, FoldersLieBelowThePrefixUnderTheProgramsName) {
    const TemporaryFolder folder;
    ApplicationPaths::SetName("program");
    ApplicationPaths::SetPrefix(folder.Item());
    EXPECT_FALSE(_GetApplicationBundleResources());
    EXPECT_FALSE(ApplicationToolsFolder());
    std::filesystem::create_directories(folder.Path("share/program/resources"));
    std::filesystem::create_directories(folder.Path("libexec/program"));
    EXPECT_EQ(path(_GetApplicationBundleResources()), folder.Path("share/program/resources"));
    EXPECT_EQ(path(ApplicationToolsFolder()), folder.Path("libexec/program"));
    ApplicationPaths::SetName("");
    EXPECT_FALSE(ApplicationToolsFolder());
    ApplicationPaths::SetPrefix(Nil);
}
