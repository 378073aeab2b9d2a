// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "fileutil/GetFolderItemModule.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using GetFolderItemModule::GetFolderItemFromShellPath;

namespace {

Ref<FolderItem> itemAt(const std::string& path) {
    return GetFolderItemFromShellPath(String(path));
}

}  // namespace

TEST(GetFolderItemFromShellPath, FindsEveryNameExactly) {
    const TemporaryFolder folder;
    for (const std::string name : {"plain.jpg", "a:b.jpg", "two\nlines", "\xE4\xFF", " %20 ", "-n", "Case", "case"}) {
        folder.Put(name, name);
        const Ref<FolderItem> item = itemAt(folder.Path(name));
        ASSERT_TRUE(item) << name;
        EXPECT_EQ(item->OpenAsTextFile()->ReadAll().Bytes(), name);
        EXPECT_EQ(item->AbsolutePath().Bytes(), folder.Path(name));
        EXPECT_EQ(item->Parent()->AbsolutePath().Bytes(), folder.Path());
    }
}

TEST(GetFolderItemFromShellPath, NeedsOnlyTheEnclosingFolder) {
    const TemporaryFolder folder;
    folder.Put("file");
    ASSERT_TRUE(itemAt(folder.Path("missing")));
    EXPECT_FALSE(itemAt(folder.Path("missing"))->Exists());
    EXPECT_FALSE(itemAt(folder.Path("missing/deeper")));
    EXPECT_FALSE(itemAt(folder.Path("file/below")));
    EXPECT_FALSE(itemAt(""));
    EXPECT_FALSE(itemAt(std::string("/tmp/a\0b", 8)));
    EXPECT_TRUE(itemAt("/")->Directory());
    EXPECT_EQ(itemAt("/tmp")->Parent()->AbsolutePath().Bytes(), "/");
}
