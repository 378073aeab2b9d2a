// SPDX-License-Identifier: GPL-2.0-or-later
#include <filesystem>
#include <map>

#include "app/Preferences.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::test {
namespace {

using Texts = std::vector<std::string>;

/// An answer of mdls that takes its time.
constexpr const char* kSlowTool = "for last; do :; done\nsleep 0.1\nexec cat \"$last.image\"\n";
/// A tool that never answers.
constexpr const char* kHangingTool = "sleep 100\n";

class Commands : public CatalogueTest {
  protected:
    Commands() {
        window->Subfoldercheckbox->Value(false);
        window->SegmentedControl1->Items(Window1::kAllItem)->Selected(true);
    }

    void addImages(int count) {
        for (int i = 0; i < count; ++i) addImage("image" + std::to_string(i) + ".jpg");
    }
    void press(const Ref<ToolButton>& tool) { window->MyToolbar_Action(*window->MyToolbar, tool); }
    void drop(const std::string& path) { window->Event_DropObject(New<DragItem>("file://" + path + "\r\n"), 0); }
    bool running() const { return window->SizeThread1->State() != Thread::NotRunning; }
    void expectAtRest() const {
        EXPECT_FALSE(running());
        EXPECT_FALSE(window->ProgressWheel1->Visible());
        EXPECT_FALSE(window->MyToolbar->StopTB->Enabled());
        EXPECT_TRUE(window->SegmentedControl1->Enabled());
    }
};

TEST_F(Commands, StopBetweenRowsKeepsWholeRowsAndAReloadStartsNormally) {
    addImages(5);
    replaceTool("mdls", kSlowTool);
    drop(pictures);
    ASSERT_TRUE(RunUntil([this] { return window->Listbox1->ListCount() == 2; }));
    EXPECT_TRUE(window->ProgressWheel1->Visible());
    EXPECT_TRUE(window->MyToolbar->StopTB->Enabled());
    EXPECT_FALSE(window->SegmentedControl1->Enabled());
    press(window->MyToolbar->StopTB);
    expectAtRest();
    for (int row = 0; row < window->Listbox1->ListCount(); ++row) EXPECT_EQ(cell(row, 3), "4000 x 3000");
    EXPECT_LT(names().size(), 5U);
    press(window->MyToolbar->RefreshTB);
    EXPECT_EQ(window->totalnumber->Text(), String(""));
    runToEnd();
    EXPECT_EQ(names().size(), 5U);
    expectAtRest();
}

TEST_F(Commands, StopEndsAHangingToolAtOnceAndLeavesNoHalfRow) {
    addImages(2);
    replaceTool("mdls", kHangingTool);
    drop(pictures);
    ASSERT_TRUE(RunUntil([this] { return window->Listbox1->ListCount() == 1; }));
    press(window->MyToolbar->StopTB);
    expectAtRest();
    EXPECT_TRUE(names().empty());
}

TEST_F(Commands, AFolderWhoseDiskDoesNotAnswerHoldsNothing) {
    addImages(2);
    const std::string slow = root + "/HANG";
    std::filesystem::create_directory(slow);
    std::filesystem::rename(addFile("slow.jpg"), slow + "/slow.jpg");
    answer(slow + "/slow.jpg", plainFields());
    useSlowDisk();
    const auto dropLikeAPerson = [this](const std::string& path) { OnOwnThread([this, path] { drop(path); }); };
    dropLikeAPerson(slow);
    EXPECT_FALSE(running());
    dropLikeAPerson(pictures);
    ASSERT_TRUE(RunUntil([this] { return names().size() == 2; }));
    runToEnd();

    ASSERT_TRUE(RunUntil([this] {
        return window->gD->Name() == String("HANG") || New<FolderItem>(String(root + "/RELEASE"))->Exists();
    }));
    EXPECT_EQ(window->SizeThread1->State(), Thread::Waiting);
    press(window->MyToolbar->StopTB);
    expectAtRest();
    dropLikeAPerson(pictures);
    ASSERT_TRUE(RunUntil([this] { return names().size() == 2; }));
    runToEnd();
}

TEST_F(Commands, EmptyingAFolderTakesItsFoldersAndLinksAndKeepsItself) {
    const std::string folder = root + "/full";
    std::filesystem::create_directories(folder + "/a/b/c");
    std::filesystem::create_directory_symlink(pictures, folder + "/link");
    addImages(1);
    Preferences::deleteFilesFromFolder(New<FolderItem>(String(folder)));
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    EXPECT_TRUE(std::filesystem::exists(pictures + "/image0.jpg")) << "a link is removed, not followed";
    EXPECT_THROW(Preferences::deleteFilesFromFolder(Nil), NilObjectException);
}

TEST_F(Commands, ACacheThatIsALinkIsEmptiedOfWhatIsOurs) {
    const auto png = [](char height) {
        return std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\xF0\0\0\0", 23) + height + "and more";
    };
    const TemporaryFolder elsewhere;
    for (const char* name : {"1234567890photo.jpg", "-1234567photo", ".new-Ab12Cd"}) elsewhere.Put(name, png('\xF0'));
    const std::map<std::string, std::string> others = {
        {"photo.jpg", png(9)},         {".new-ideas.txt", "kept"},
        {"16-icon.png", png(16)},      {"20240101_1.jpg", "\xFF\xD8\xFF and more than a header"},
        {"20240101.png", png('\xF1')}, {"1234567folder/1234567photo.jpg", png(9)}};
    for (const auto& [name, content] : others) elsewhere.Put(name, content);
    const std::string cache = Preferences::ThumbnailsFolder()->AbsolutePath().ToStd();
    std::filesystem::remove_all(cache);
    std::filesystem::create_directory_symlink(elsewhere.Path(), cache);
    search();
    EXPECT_EQ(elsewhere.Item()->Count(), static_cast<int>(others.size()));
    for (const auto& [name, content] : others) EXPECT_EQ(readFile(elsewhere.Path(name)), content) << name;
    std::filesystem::remove(cache);
}

}  // namespace
}  // namespace marrowbeck::test
