// SPDX-License-Identifier: GPL-2.0-or-later
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "fileutil/FileReplace.h"
#include "fileutil/GetFolderItemModule.h"
#include "tests/support/ForkedProcess.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

class FileReplacement : public testing::Test {
  protected:
    FileReplacement() {
        folder.Put("new", "new content");
        folder.Put("old", "old content");
    }

    std::string read(const char* name) const { return readFile(folder.Path(name)); }
    Ref<FolderItem> item(const char* name) const { return folder.Item()->TrueChild(name); }
    struct stat status(const char* name) const {
        struct stat status {};
        lstat(folder.Path(name).c_str(), &status);
        return status;
    }
    /// The failure's message and number, or that there was none.
    static std::string failure(const Ref<FolderItem>& source, const Ref<FolderItem>& target) {
        try {
            FileReplace::Replace(source, target);
            return "none";
        } catch (const FileReplaceException& exception) {
            return std::to_string(exception.ErrorNumber()) + " " + exception.Message().ToStd();
        }
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(FileReplacement, ASwapLeavesBothFiles) {
    ASSERT_TRUE(FileReplace::VolumeSupportsFSExchangeObjects(item("new")));
    FileReplace::Replace(item("new"), item("old"));
    EXPECT_EQ(read("old"), "new content");
    EXPECT_EQ(read("new"), "old content");
    EXPECT_EQ(folder.Item()->Count(), 2) << "no scratch file is left";
}

TEST_F(FileReplacement, WithoutASwapTheSourceIsRenamed) {
    EXPECT_TRUE(InForkedProcess([this] {
        if (!RefuseExchange() || FileReplace::VolumeSupportsFSExchangeObjects(item("new"))) return false;
        FileReplace::Replace(item("new"), item("old"));
        return true;
    }));
    EXPECT_EQ(read("old"), "new content");
    EXPECT_EQ(folder.Item()->Count(), 1);
}

TEST_F(FileReplacement, AMissingTargetIsMade) {
    FileReplace::Replace(item("new"), item("third"));
    EXPECT_EQ(read("third"), "new content");
    EXPECT_FALSE(item("new")->Exists());
}

TEST_F(FileReplacement, TheNewFileTakesOverAllButTheModificationTime) {
    const std::string old = folder.Path("old");
    const timespec times[2] = {{1'000'000, 0}, {2'000'000, 0}};
    const bool attributes = ::setxattr(old.c_str(), "user.note", "kept", 4, 0) == 0;
    const bool root = ::geteuid() == 0;
    ASSERT_TRUE(!root || ::chown(old.c_str(), 1234, 4321) == 0);
    ::chmod(old.c_str(), 0640);
    ::utimensat(AT_FDCWD, old.c_str(), times, 0);
    const struct stat before = status("old");
    for (const bool swaps : {true, false}) {
        folder.Put("new", "new content");
        ASSERT_TRUE(InForkedProcess([&] {
            if (!swaps && !RefuseExchange()) return false;
            FileReplace::Replace(item("new"), item("old"));
            return true;
        }));
        const struct stat after = status("old");
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        EXPECT_EQ(after.st_atim.tv_sec, 1'000'000);
        EXPECT_GT(after.st_mtim.tv_sec, 1'000'000'000);
        EXPECT_EQ(read("old"), "new content");
        ::utimensat(AT_FDCWD, old.c_str(), times, 0);
        std::array<char, 8> note{};
        EXPECT_TRUE(!attributes || ::getxattr(old.c_str(), "user.note", note.data(), note.size()) == 4);
    }
}

TEST_F(FileReplacement, RefusesInOrder) {
    std::filesystem::create_directory(folder.Path("folder"));
    const auto missing = item("missing");
    EXPECT_EQ(failure(missing, Nil), "0 Target parameter is nil.");
    EXPECT_EQ(failure(missing, item("folder")), "0 Source does not exist.");
    EXPECT_EQ(failure(item("folder"), item("folder")), "0 Source is a directory.");
    EXPECT_EQ(failure(item("new"), item("folder")), "0 Target is a directory.");
    EXPECT_EQ(failure(item("new"), missing->Child("below")), "2 No such file or directory");
    EXPECT_THROW(FileReplace::Replace(Nil, item("old")), NilObjectException);
    EXPECT_THROW(FileReplace::VolumeSupportsFSExchangeObjects(Nil), FileReplaceException);
    EXPECT_FALSE(FileReplace::GetCatalogInfoForRename(Nil));
    EXPECT_FALSE(FileReplace::GetCatalogInfoForRename(missing));
    EXPECT_EQ(FileReplace::POSIXPath(Nil), "");
    EXPECT_EQ(read("old"), "old content");
    EXPECT_EQ(read("new"), "new content");
}

TEST_F(FileReplacement, ALinkStaysALink) {
    std::filesystem::create_symlink("old", folder.Path("link"));
    FileReplace::Replace(item("new"), item("link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(read("old"), "new content");
    std::filesystem::create_directory_symlink(".", folder.Path("up"));
    EXPECT_EQ(failure(item("new"), item("up")), "0 Target is a directory.");
}

TEST_F(FileReplacement, LinksThatLeadInACircleMakeWayForAFileOfItsOwnMode) {
    for (const bool swaps : {true, false}) {
        for (const char* name : {"one", "other", "private"}) std::filesystem::remove(folder.Path(name));
        std::filesystem::create_symlink("other", folder.Path("one"));
        std::filesystem::create_symlink("one", folder.Path("other"));
        ::chmod(folder.Put("private", "new content").c_str(), 0600);
        ASSERT_TRUE(InForkedProcess([&] {
            if (!swaps && !RefuseExchange()) return false;
            FileReplace::Replace(item("private"), item("one"));
            return true;
        }));
        EXPECT_EQ(status("one").st_mode, mode_t{S_IFREG | 0600});
        EXPECT_EQ(read("one"), "new content");
    }
}

TEST_F(FileReplacement, ACopyArrivesUnderANameThatIsNobodys) {
    folder.Put(".old.new", "somebody's");
    FileReplace::ReplaceByCopy(item("new"), item("old"));
    EXPECT_EQ(read("old"), "new content");
    EXPECT_EQ(read(".old.new"), "somebody's");
    std::filesystem::create_directory(folder.Path("folder"));
    EXPECT_THROW(FileReplace::ReplaceByCopy(item("new"), item("folder")), FileReplaceException);
    EXPECT_EQ(folder.Item()->Count(), 4) << "no copy is left, of one that failed either";
}

TEST_F(FileReplacement, OfAnotherVolumeNothingIsCopied) {
    const std::filesystem::path other = "/dev/shm";
    struct stat there {};
    if (::stat(other.c_str(), &there) != 0 || there.st_dev == status("old").st_dev) GTEST_SKIP() << "one volume only";
    const std::string path = other / ("marrowbeck-" + std::to_string(::getpid()));
    std::ofstream(path) << "elsewhere";
    EXPECT_EQ(failure(GetFolderItem(String(path)), item("old")), "18 ");
    EXPECT_EQ(failure(GetFolderItem(String(path)), item("third")), "18 Invalid cross-device link");
    EXPECT_EQ(read("old"), "old content");
    // But a link that leads there is what a person made, who means the file to be there.
    std::filesystem::create_symlink(path, folder.Path("link"));
    FileReplace::Replace(item("new"), item("link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(read("link"), "new content");
    std::filesystem::remove(path);
}

TEST(GetFolderItemFromShellPath, NeedsOnlyTheEnclosingFolder) {
    const TemporaryFolder folder;
    const auto itemAt = [](const std::string& path) {
        return GetFolderItemModule::GetFolderItemFromShellPath(String(path));
    };
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
