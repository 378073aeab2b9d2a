// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FileType.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "framework/core/process/Shell.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

/// Whichever way the disk is asked, the answers are the same: with the tool that asks it aside, or without.
class FileTypeTest : public testing::TestWithParam<const char*> {
  protected:
    FileTypeTest() { Shell::SetToolsFolder(MARROWBECK_TOOLS, {GetParam()}); }
    ~FileTypeTest() override { Shell::SetToolsFolder(""); }

    std::string typeOf(const std::string& name) { return folder_.Item()->TrueChild(String(name))->Type().ToStd(); }

    TemporaryFolder folder_;
    const Ref<FileType> any_ = New<FileType>("special/any", "", "????", "????");
    const Ref<FileType> special_ = New<FileType>("special/folder", "", "fold", "MACS");
    const Ref<FileType> jpeg_ = New<FileType>("image/jpeg", ".jfif;.jpe;.jpeg;.jpg", "JPEG", "prvw");
    const Ref<FileType> tiff_ = New<FileType>("image/tiff", ".jfx;.tif;.tiff", "TIFF", "????");
};
INSTANTIATE_TEST_SUITE_P(Asked, FileTypeTest, testing::Values("look", "none"));

}  // namespace

TEST_P(FileTypeTest, NamesAnswerByTheirSuffix) {
    const std::pair<const char*, const char*> rows[] = {{"a.jpg", "image/jpeg"},
                                                        {"two\nlines.Jpe", "image/jpeg"},
                                                        {"a.jfx", "image/tiff"},
                                                        {"a.jpg.tiff", "image/tiff"},
                                                        {"\xFF\xFE.tif", "image/tiff"},
                                                        {".jpg", "image/jpeg"},
                                                        {"jpg", ""},
                                                        {"a.jpg.", ""},
                                                        {"a.jfif;.jpe;.jpeg;.jpg", "image/jpeg"}};
    for (const auto& [name, type] : rows) EXPECT_EQ(typeOf(name), type) << name;
}

TEST_P(FileTypeTest, CodesAnswerWhereTheSuffixSaysNothing) {
    folder_.Put("file");
    folder_.Put("file.jpg");
    const Ref<FolderItem> file = folder_.Item()->TrueChild("file");
    file->MacType("TIFF");
    if (FolderItem::Own(file->AbsolutePath())->MacType().IsEmpty()) GTEST_SKIP() << "no attributes on this file system";
    EXPECT_EQ(file->Type().Bytes(), "image/tiff") << "any creator will do";
    file->MacType("JPEG");
    EXPECT_TRUE(file->Type().IsEmpty());
    file->MacCreator("prvw");
    EXPECT_EQ(file->Type().Bytes(), "image/jpeg");
    file->MacType("jpeg");
    EXPECT_TRUE(file->Type().IsEmpty()) << "codes are exact";
    file->MacType("????");
    file->MacCreator("????");
    EXPECT_TRUE(file->Type().IsEmpty());
    folder_.Item()->TrueChild("file.jpg")->MacType("TIFF");
    EXPECT_EQ(typeOf("file.jpg"), "image/jpeg");

    // Children of a list are asked about together.
    folder_.Put("before");
    folder_.Put("later");
    folder_.Item()->TrueChild("later")->MacType("TIFF");
    const Ref<FolderItem> listed = folder_.Item();
    std::string types;
    const int count = listed->Count();
    for (int i = 1; i <= count; ++i) types += listed->TrueItem(i)->Type().ToStd() + ";";
    EXPECT_EQ(types, ";;image/jpeg;image/tiff;");
}

TEST_P(FileTypeTest, OnlyFilesAreImages) {
    std::filesystem::create_directory(folder_.Path("folder.jpg"));
    std::filesystem::create_directory_symlink("folder.jpg", folder_.Path("to-folder.jpg"));
    folder_.Put("file.jpg");
    std::filesystem::create_symlink("file.jpg", folder_.Path("to-file.tif"));
    std::filesystem::create_symlink("gone.jpg", folder_.Path("to-nothing.jpg"));
    ASSERT_EQ(::mkfifo(folder_.Path("pipe.jpg").c_str(), 0600), 0);
    const Ref<FolderItem> listed = folder_.Item();
    for (int i = listed->Count(); i >= 1; --i) {
        const Ref<FolderItem> child = listed->TrueItem(i);
        const std::string name = child->Name().ToStd();
        const std::string expected = name == "file.jpg"      ? "image/jpeg"
                                     : name == "to-file.tif" ? "image/tiff"
                                     : name == "folder.jpg"  ? "special/folder"
                                                             : "";
        EXPECT_EQ(child->Type().Bytes(), expected) << name;
        EXPECT_EQ(typeOf(name), expected) << name;
    }
}
