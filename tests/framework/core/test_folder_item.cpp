// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FolderItem.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
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

class FolderItemTest : public testing::Test {
  protected:
    TemporaryFolder temporary_;
    Ref<FolderItem> folder_ = temporary_.Item();
};

}  // namespace

TEST_F(FolderItemTest, NamesOfAnyBytesAreMadeFoundCopiedAndDeleted) {
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

TEST_F(FolderItemTest, NamesThatNoFileCanHaveGiveNoChild) {
    EXPECT_FALSE(folder_->Child("a/b"));
    EXPECT_FALSE(folder_->TrueChild(String(std::string_view("a\0b", 3))));
    EXPECT_TRUE(folder_->Child("")->Directory());
    EXPECT_TRUE(folder_->Child("")->AbsolutePath().SameBytes(folder_->AbsolutePath()));
    EXPECT_TRUE(folder_->Child("..")->AbsolutePath().SameBytes(folder_->Parent()->AbsolutePath()));
    EXPECT_FALSE(folder_->Child(String(std::string(5000, 'n')))->Exists());
}

TEST_F(FolderItemTest, PathsAreMadeAbsoluteAndClean) {
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

TEST_F(FolderItemTest, AnItemOfNoPathDoesNothing) {
    const auto nothing = New<FolderItem>("", 0);
    EXPECT_FALSE(nothing->Exists());
    EXPECT_FALSE(nothing->Child("x"));
    EXPECT_FALSE(nothing->Parent());
    EXPECT_EQ(nothing->Count(), 0);
    EXPECT_FALSE(nothing->OpenAsTextFile());
    EXPECT_FALSE(nothing->CreateTextFile());
    EXPECT_FALSE(nothing->CreateAsFolder());
    EXPECT_FALSE(nothing->Delete());
    EXPECT_TRUE(nothing->GetSaveInfo(Nil, 0).IsEmpty());
}

TEST_F(FolderItemTest, RootIsItsOwnEnd) {
    const Ref<FolderItem> root = GetFolderItem("/");
    EXPECT_EQ(root->Name().Bytes(), "/");
    EXPECT_FALSE(root->Parent());
    EXPECT_EQ(root->Child("tmp")->AbsolutePath().Bytes(), "/tmp");
    EXPECT_EQ(root->Child("tmp")->Parent()->AbsolutePath().Bytes(), "/");
}

TEST_F(FolderItemTest, ChildrenAreASortedSnapshotUntilTheNextCount) {
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

TEST_F(FolderItemTest, AFolderCanBeEmptiedFromItsEnd) {
    for (int i = 0; i < 50; ++i) temporary_.Put(std::to_string(i));
    for (int i = folder_->Count(); i >= 1; --i) EXPECT_TRUE(folder_->TrueItem(i)->Delete());
    EXPECT_EQ(folder_->Count(), 0);
    EXPECT_TRUE(folder_->Delete());
    EXPECT_FALSE(folder_->Exists());
    EXPECT_EQ(folder_->Count(), 0);
}

TEST_F(FolderItemTest, LinksStandForThemselvesUnlessChildFollowsThem) {
    std::filesystem::create_directories(temporary_.Path("target/inner"));
    temporary_.Put("target/file", "12345");
    std::filesystem::create_symlink("target", temporary_.Path("folder-link"));
    std::filesystem::create_symlink("folder-link/file", temporary_.Path("chain"));

    const Ref<FolderItem> link = folder_->TrueChild("folder-link");
    EXPECT_TRUE(link->Exists());
    EXPECT_FALSE(link->Directory());
    const Ref<FolderItem> followed = folder_->Child("folder-link");
    EXPECT_TRUE(followed->Directory());
    EXPECT_EQ(followed->AbsolutePath().Bytes(), temporary_.Path("target"));
    EXPECT_EQ(folder_->Child("chain")->Length(), 5U);
    EXPECT_EQ(folder_->TrueChild("chain")->Length(), 5U);
    EXPECT_TRUE(GetFolderItem(String(temporary_.Path("folder-link/")))->Directory());

    EXPECT_TRUE(link->Delete());
    EXPECT_TRUE(std::filesystem::exists(temporary_.Path("target/file")));
}

TEST_F(FolderItemTest, LinksToNothingAndCirclesAreItemsToo) {
    std::filesystem::create_symlink("gone/../missing", temporary_.Path("dangling"));
    std::filesystem::create_symlink("b", temporary_.Path("a"));
    std::filesystem::create_symlink("a", temporary_.Path("b"));
    EXPECT_TRUE(folder_->TrueChild("dangling")->Exists());
    EXPECT_FALSE(folder_->Child("dangling")->Exists());
    EXPECT_EQ(folder_->Child("dangling")->Name().Bytes(), "missing");
    EXPECT_EQ(folder_->Child("a")->Name().Bytes(), "a");
    EXPECT_FALSE(folder_->Child("a")->OpenAsTextFile());
    EXPECT_EQ(folder_->Count(), 3);
    for (int i = 3; i >= 1; --i) EXPECT_TRUE(folder_->TrueItem(i)->Delete());
}

TEST_F(FolderItemTest, FailuresAreAnswersNotExceptions) {
    temporary_.Put("file");
    const Ref<FolderItem> file = folder_->Child("file");
    EXPECT_EQ(file->Count(), 0);
    EXPECT_FALSE(file->TrueItem(1));
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

TEST_F(FolderItemTest, AFolderThatMayNotBeReadHasNoChildren) {
    constexpr uid_t kNobody = 65534;
    std::filesystem::create_directory(temporary_.Path("closed"));
    temporary_.Put("closed/file");
    ::chmod(temporary_.Path().c_str(), 0755);
    ::chmod(temporary_.Path("closed").c_str(), 0);
    const Ref<FolderItem> closed = folder_->Child("closed");
    const bool superuser = ::geteuid() == 0;  // who may read all
    if (superuser) {
        ASSERT_EQ(::seteuid(kNobody), 0);
    }
    const int count = closed->Count();
    const bool directory = closed->Directory();
    if (superuser) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    ::chmod(temporary_.Path("closed").c_str(), 0700);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(directory);
    EXPECT_EQ(closed->Count(), 1);
}

TEST_F(FolderItemTest, NothingWaitsForAPipe) {
    ASSERT_EQ(::mkfifo(temporary_.Path("pipe.jpg").c_str(), 0600), 0);
    const Ref<FolderItem> pipe = folder_->Child("pipe.jpg");
    EXPECT_FALSE(pipe->CreateTextFile());
    EXPECT_TRUE(pipe->OpenAsTextFile()->EndOfFile());
}

TEST_F(FolderItemTest, CopiesKeepContentModeAndCodesAndOverwriteNothing) {
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

TEST_F(FolderItemTest, CodesArePartOfTheFile) {
    temporary_.Put("file");
    const Ref<FolderItem> file = folder_->Child("file");
    EXPECT_TRUE(file->MacType().IsEmpty());
    file->MacType("jp2 ");
    file->MacCreator("ogle");
    if (file->MacType().IsEmpty()) GTEST_SKIP() << "no attributes on this file system";
    EXPECT_EQ(folder_->TrueItem(1)->MacType().Bytes(), "jp2 ");
    EXPECT_EQ(folder_->TrueItem(1)->MacCreator().Bytes(), "ogle");
    file->MacType("");
    EXPECT_TRUE(file->MacType().IsEmpty());
    folder_->Child("missing")->MacType("TEXT");
}

TEST_F(FolderItemTest, ItemsOfOneVolumeHaveItsNumber) {
    temporary_.Put("file");
    EXPECT_EQ(folder_->MacVRefNum(), folder_->Child("file")->MacVRefNum());
    EXPECT_NE(folder_->MacVRefNum(), GetFolderItem("/proc")->MacVRefNum());
    EXPECT_TRUE(folder_->Child("file")->Visible());
    EXPECT_FALSE(folder_->Child(".file")->Visible());
}

TEST_F(FolderItemTest, ManyChildrenAreListedOnce) {
    constexpr int kFiles = 20'000;
    for (int i = 0; i < kFiles; ++i) {
        const int file = ::open(temporary_.Path(std::to_string(kFiles + i) + ".jpg").c_str(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    ASSERT_EQ(folder_->Count(), kFiles);
    // Moved out of sight, the folder cannot be read again: all answers must come from the one listing.
    std::filesystem::rename(temporary_.Path(), temporary_.Path() + "-moved");
    for (int i = 1; i <= kFiles; ++i) {
        for (int pass = 0; pass < 4; ++pass) {
            ASSERT_EQ(folder_->TrueItem(i)->Name().Bytes(), std::to_string(kFiles + i - 1) + ".jpg");
        }
    }
    std::filesystem::rename(temporary_.Path() + "-moved", temporary_.Path());
}
