// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "fileutil/PathItems.h"
#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::test {
namespace {

TEST(PathItems, AskOnceAboutAllFoldersThatComeNext) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("tools"));
    std::filesystem::create_symlink(MARROWBECK_SLOW_LOOK, folder.Path("tools/look"));
    Shell::SetToolsFolder(String(folder.Path("tools")), {"look"});
    folder.Put("a/one");
    folder.Put("a/b/two");
    std::filesystem::create_directory_symlink("a", folder.Path("link"));
    Array<String> paths;
    for (const char* name : {"a/one", "a/b/two", "a/gone", "gone/three", "link/one", "a/one/four"}) {
        paths.Append(String(folder.Path(name)));
    }
    PathItems items(paths);
    std::string found;
    for (int i = 0; i <= paths.Ubound(); ++i) {
        const Ref<FolderItem> item = items.At(i);
        found += (item ? item->AbsolutePath().ToStd().substr(folder.Path().size()) : "none") + " ";
    }
    EXPECT_EQ(found, "/a/one /a/b/two /a/gone none /a/one none ");
    EXPECT_EQ(readFile(std::string(std::getenv("HOME")) + "/asked"),
              "folders " + folder.Path("a") + " " + folder.Path("a/b") + " " + folder.Path("gone") + " " +
                  folder.Path("link") + " " + folder.Path("a/one") + " \n");
    Shell::SetToolsFolder("");
}

}  // namespace
}  // namespace marrowbeck::test
