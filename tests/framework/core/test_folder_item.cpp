// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FolderItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
#include "framework/core/process/Shell.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;
using testing::ElementsAre;

namespace {

std::string content(const Ref<FolderItem>& file) {
    return file->OpenAsTextFile()->ReadAll().ToStd();
}

std::vector<std::string> names(const Ref<FolderItem>& folder) {
    std::vector<std::string> found;
    const int count = folder->Count();
    for (int i = 1; i <= count; ++i) found.push_back(folder->TrueItem(i)->Name().ToStd());
    return found;
}

/// Whichever way the disk is asked, the answers are the same: with the tool that asks it aside, or without.
class FolderItemTest : public testing::TestWithParam<const char*> {
  protected:
    FolderItemTest() { Shell::SetToolsFolder(MARROWBECK_TOOLS, {GetParam()}); }
    ~FolderItemTest() override { Shell::SetToolsFolder(""); }

    TemporaryFolder temporary_;
    Ref<FolderItem> folder_ = temporary_.Item();
};
INSTANTIATE_TEST_SUITE_P(Asked, FolderItemTest, testing::Values("look", "none"));

}  // namespace

TEST_P(FolderItemTest, NamesOfAnyBytesAreMadeFoundCopiedAndDeleted) {
    const std::vector<std::string> all = {
        "a b",    "it's \"so\"",  "$(touch x)`id`",     "two\nlines",  "-rf", "#1 50% a:b;c",
        "*?[a]~", "\xFF\xFE raw", "gr\xC3\xBC\xC3\x9F", "back\\slash", " "};
    for (const std::string& name : all) {
        const Ref<FolderItem> file = folder_->Child(String(name));
        EXPECT_FALSE(file->Exists()) << name;
        ASSERT_TRUE(file->CreateTextFile()) << name;
        EXPECT_TRUE(file->Exists()) << name;
        EXPECT_EQ(file->Name().Bytes(), name);
        EXPECT_TRUE(std::filesystem::exists(temporary_.Path(name))) << name;
    }
    EXPECT_THAT(names(folder_), testing::UnorderedElementsAreArray(all));
    for (const std::string& name : all) {
        const Ref<FolderItem> copy = folder_->Child(String("copy of " + name));
        EXPECT_TRUE(folder_->Child(String(name))->CopyFileTo(copy)) << name;
        EXPECT_TRUE(folder_->Child(String(name))->Delete()) << name;
        EXPECT_TRUE(copy->Delete()) << name;
    }
    EXPECT_EQ(folder_->Count(), 0);
}

TEST_P(FolderItemTest, PathsAreMadeAbsoluteAndClean) {
    std::filesystem::create_directories(temporary_.Path("real/deep"));
    std::filesystem::create_symlink("real/deep", temporary_.Path("link"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(temporary_.Path());
    const auto path = [](const char* text) { return GetFolderItem(text)->AbsolutePath().ToStd(); };
    EXPECT_EQ(path("./new//file/"), temporary_.Path("new/file"));
    EXPECT_EQ(path("."), temporary_.Path());
    EXPECT_EQ(path("link/../x"), temporary_.Path("real/x"));
    EXPECT_EQ(path("missing/../x"), temporary_.Path("x"));
    EXPECT_EQ(path("/../.."), "/");
    std::filesystem::current_path(before);
    EXPECT_FALSE(GetFolderItem("", 0));
    EXPECT_FALSE(GetFolderItem(String(std::string_view("/tmp\0/x", 7))));
}

TEST_P(FolderItemTest, ChildrenAreASortedSnapshotUntilTheNextCount) {
    for (const char* name : {"b", "a", ".hidden", "B", "c"}) temporary_.Put(name);
    EXPECT_EQ(folder_->TrueItem(1)->Name().Bytes(), ".hidden") << "without Count the folder is read at first use";
    EXPECT_THAT(names(folder_), ElementsAre(".hidden", "B", "a", "b", "c"));
    temporary_.Put("!");
    EXPECT_EQ(folder_->TrueItem(1)->Name().Bytes(), ".hidden");
    EXPECT_FALSE(folder_->TrueItem(6));
    EXPECT_EQ(folder_->Count(), 6);
    EXPECT_EQ(folder_->TrueItem(1)->Name().Bytes(), "!");
    EXPECT_FALSE(folder_->TrueItem(0));
    EXPECT_FALSE(folder_->TrueItem(-1));
    EXPECT_FALSE(folder_->TrueItem(7));
}

TEST_P(FolderItemTest, LinksStandForThemselvesUnlessChildFollowsThem) {
    std::filesystem::create_directories(temporary_.Path("target/inner"));
    temporary_.Put("target/file", "12345");
    std::filesystem::create_symlink("target", temporary_.Path("folder-link"));
    std::filesystem::create_symlink("folder-link/file", temporary_.Path("first"));
    std::filesystem::create_symlink("first", temporary_.Path("chain"));

    const Ref<FolderItem> link = folder_->TrueChild("folder-link");
    EXPECT_TRUE(link->Exists());
    EXPECT_FALSE(link->Directory());
    const Ref<FolderItem> followed = folder_->Child("folder-link");
    EXPECT_TRUE(followed->Directory());
    EXPECT_EQ(followed->AbsolutePath().Bytes(), temporary_.Path("target"));
    EXPECT_EQ(folder_->Child("chain")->AbsolutePath().Bytes(), temporary_.Path("folder-link/file"));
    EXPECT_EQ(folder_->TrueChild("chain")->Length(), 5U);
    EXPECT_TRUE(folder_->IsSame(followed->Parent()));
    EXPECT_FALSE(folder_->IsSame(followed));
    EXPECT_TRUE(GetFolderItem(String(temporary_.Path("folder-link/")))->Directory());

    EXPECT_TRUE(link->Delete());
    EXPECT_TRUE(std::filesystem::exists(temporary_.Path("target/file")));
}

TEST_P(FolderItemTest, FailuresAreAnswersNotExceptions) {
    temporary_.Put("file");
    const Ref<FolderItem> file = folder_->Child("file");
    EXPECT_EQ(file->Count(), 0);
    EXPECT_EQ(file->CountError(), ENOTDIR);
    EXPECT_FALSE(file->TrueItem(1));
    EXPECT_EQ(file->AccessError(R_OK), 0);
    EXPECT_EQ(folder_->Child("missing")->AccessError(F_OK), ENOENT);
    EXPECT_FALSE(file->Child("below")->CreateTextFile());
    EXPECT_FALSE(file->CreateAsFolder());
    EXPECT_FALSE(folder_->OpenAsTextFile());
    EXPECT_FALSE(folder_->OpenAsBinaryFile(true));
    EXPECT_FALSE(folder_->Delete()) << "it is not empty";
    EXPECT_FALSE(folder_->Child("missing")->Delete());
    EXPECT_FALSE(folder_->Child("missing")->OpenAsBinaryFile(true));
    EXPECT_EQ(folder_->Child("missing")->Length(), 0U);
    EXPECT_TRUE(folder_->Child("new")->CreateAsFolder());
    EXPECT_TRUE(folder_->Child("new")->CreateAsFolder()) << "what exists is as good as made";
    EXPECT_FALSE(folder_->Child("absent")->Child("new")->CreateAsFolder());
}

TEST_P(FolderItemTest, CopiesKeepContentModeAndCodesAndOverwriteNothing) {
    std::string bytes(700'001, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31);
    temporary_.Put("source", bytes);
    ::chmod(temporary_.Path("source").c_str(), 0640);
    const Ref<FolderItem> source = folder_->Child("source");
    source->MacType("TEXT");
    const bool attributes = !source->MacType().IsEmpty();
    const Ref<FolderItem> copy = folder_->Child("copy");
    ASSERT_TRUE(source->CopyFileTo(copy));
    EXPECT_EQ(content(copy), bytes);
    EXPECT_EQ(std::filesystem::status(temporary_.Path("copy")).permissions(), std::filesystem::perms{0640});
    EXPECT_EQ(copy->MacType().Bytes(), attributes ? "TEXT" : "");

    temporary_.Put("other", "keep");
    EXPECT_FALSE(source->CopyFileTo(folder_->Child("other")));
    EXPECT_FALSE(source->CopyFileTo(source));
    EXPECT_EQ(content(folder_->Child("other")), "keep");
    EXPECT_EQ(source->Length(), bytes.size());
    EXPECT_FALSE(folder_->Child("missing")->CopyFileTo(folder_->Child("no")));
    EXPECT_FALSE(folder_->Child("no")->Exists());

    ASSERT_TRUE(folder_->Child("sub")->CreateAsFolder());
    EXPECT_TRUE(source->CopyFileTo(folder_->Child("sub")));
    EXPECT_TRUE(folder_->Child("sub")->Child("source")->Exists());
}
