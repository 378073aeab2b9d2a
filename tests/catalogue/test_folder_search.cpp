// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <filesystem>

#include "app/Colors.h"
#include "tests/catalogue/CatalogueTest.h"

namespace marrowbeck::test {
namespace {

using Texts = std::vector<std::string>;

class FolderSearch : public CatalogueTest {
  protected:
    FolderSearch() {
        window->Subfoldercheckbox->Value(false);
        choose(Window1::kAllItem);
    }

    void choose(int item) { window->SegmentedControl1->Items(item)->Selected(true); }
};

TEST_F(FolderSearch, WalksDirectChildrenOfTheChosenTypes) {
    for (const char* name : {"a.JPG", "b.jpeg", "c.tif", "d.png", "e.gif", "f.jfx", "g.jp2", "h.pct", "i.webp", "j.cr2",
                             "k.txt", "noext", "deep/l.jpg", "folder.jpg/x"}) {
        addImage(name);
    }
    std::filesystem::create_symlink(pictures + "/a.JPG", pictures + "/link.png");
    answer(pictures + "/link.png", plainFields());
    search();
    EXPECT_EQ(names(), (Texts{"a.JPG", "b.jpeg", "c.tif", "d.png", "e.gif", "f.jfx", "g.jp2", "h.pct", "link.png"}));
    EXPECT_EQ(window->TotalLabel->Text(), String(""));
    EXPECT_EQ(window->filterlabel->Text(), String("Filter"));
    EXPECT_TRUE(window->totalnumber->TextColor() == Colors::kWhite);

    const std::vector<std::pair<int, Texts>> filters = {{Window1::kJpgItem, {"a.JPG", "b.jpeg"}},
                                                        {Window1::kTiffItem, {"c.tif", "f.jfx"}},
                                                        {Window1::kPngItem, {"d.png", "link.png"}}};
    for (const auto& [item, expected] : filters) {
        choose(item);
        search();
        EXPECT_EQ(names(), expected);
        EXPECT_EQ(window->filterlabel->Text(), String("Filtered"));
        EXPECT_TRUE(window->filterlabel->TextColor() == Colors::kDarkRed);
    }
}

TEST_F(FolderSearch, TheDiskIsAskedAboutTheFolderAndNotAboutEachFile) {
    const std::string folder = root + "/copies";
    std::filesystem::copy(MARROWBECK_SAMPLES, folder, std::filesystem::copy_options::recursive);
    useSlowDisk({"mdls", "mdfind"});
    for (const bool subfolders : {false, true}) {
        window->Subfoldercheckbox->Value(subfolders);
        search(folder);
        const std::string questions = asked();
        EXPECT_NE(questions.find(folder), std::string::npos);
        for (const std::string& name : names()) EXPECT_EQ(questions.find(name), std::string::npos) << questions;
        EXPECT_EQ(cell(0, 2), ".02") << "the length of " << cell(0, 0);
    }
}

TEST_F(FolderSearch, AsksTheIndexWithTheExactCommandOfEachFilter) {
    window->Subfoldercheckbox->Value(true);
    const std::string odd = root + "/it's a \"$(touch x)\" folder";
    std::filesystem::create_directory(odd);
    const Texts terms = {"kMDItemContentType == public.jpeg", "kMDItemContentType == public.tiff",
                         "kMDItemContentType == public.png", "kMDItemContentTypeTree == *image"};
    for (int item = 0; item < 4; ++item) {
        choose(item);
        search(odd);
        EXPECT_EQ(commands(), (Texts{"mdfind -0 -onlyin " + odd + " " + terms[static_cast<std::size_t>(item)]}));
        EXPECT_EQ(window->filterlabel->Text(), String(item == Window1::kAllItem ? "Filter" : "Filtered"));
    }
    EXPECT_EQ(window->TotalLabel->Text(), String(""));
    EXPECT_EQ(window->totalnumber->Text(), String("No Image Files"));
    EXPECT_TRUE(window->totalnumber->TextColor() == Colors::kRed);
}

TEST_F(FolderSearch, ListsWhatTheIndexFoundSortedAtTheEnd) {
    window->Subfoldercheckbox->Value(true);
    found({addImage("deep/c.jpg"), addImage("a.cr2"), addImage("B.png")});
    search();
    EXPECT_EQ(names(), (Texts{"a.cr2", "B.png", "c.jpg"}));
    EXPECT_EQ(window->TotalLabel->Text(), String("Total found: 3"));
    EXPECT_EQ(window->totalnumber->Text(), String("Image Files: 3"));
    EXPECT_EQ(window->Title(), String("Marrowbeck: pictures"));
    EXPECT_FALSE(window->ProgressWheel1->Visible());
    EXPECT_FALSE(window->MyToolbar->StopTB->Enabled());
    EXPECT_TRUE(window->SegmentedControl1->Enabled());
}

TEST_F(FolderSearch, AFailingIndexIsToldAndTheRunComesToItsEnd) {
    window->Subfoldercheckbox->Value(true);
    found({addImage("a.jpg")}, 3);
    search();
    EXPECT_EQ(messages, Texts{"Error code: 3"});
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(window->TotalLabel->Text(), String(""));
    EXPECT_EQ(window->totalnumber->Text(), String("No Image Files"));
    EXPECT_TRUE(window->SegmentedControl1->Enabled());
    EXPECT_FALSE(window->ProgressWheel1->Visible());
}

TEST_F(FolderSearch, PassesOverAVanishedFolderAndTellsOfAVanishedFile) {
    window->Subfoldercheckbox->Value(true);
    found({pictures + "/gone/a.jpg", addImage("b.jpg"), pictures + "/c.jpg", addImage("d.jpg")});
    search();
    EXPECT_EQ(names(), (Texts{"b.jpg", "c.jpg"})) << "the search ends at the file that could not be read";
    EXPECT_EQ(messages, Texts{"Error code: 1"});
    EXPECT_EQ(window->TotalLabel->Text(), String("Total found: 4"));
}

TEST_F(FolderSearch, NoNameIsReadByAShellAndEachImageIsListed) {
    useRealTools();
    window->Subfoldercheckbox->Value(true);
    const Texts odd = {"a b.jpg",       "it's.jpg",  "\"q\".jpg",       "$(touch ran).jpg", "`touch ran`.jpg",
                       "line\nend.jpg", "-raw.jpg",  "#1.jpg",          "50%.jpg",          "a:b.jpg",
                       "a;b&c|d.jpg",   "*?[a].jpg", "caf\xC3\xA9.jpg", "raw\xFF\xFE.jpg",  "back\\slash.jpg",
                       "~.jpg",         "a=b.jpg",   " blank .jpg"};
    for (const std::string& name : odd) addFile(name);
    for (const bool subfolders : {true, false}) {
        window->Subfoldercheckbox->Value(subfolders);
        search();
        Texts listed = names();
        Texts expected = odd;
        std::sort(listed.begin(), listed.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(listed, expected);
        EXPECT_TRUE(messages.empty());
    }
    EXPECT_FALSE(std::filesystem::exists(pictures + "/ran"));
    EXPECT_FALSE(std::filesystem::exists("ran"));
}

TEST_F(FolderSearch, RealToolsGiveRealRowsOfTheSamples) {
    useRealTools();
    window->Subfoldercheckbox->Value(true);
    search(MARROWBECK_SAMPLES);
    EXPECT_TRUE(messages.empty());
    ASSERT_GE(names().size(), 6U);
    bool camera = false;
    for (int row = 0; row < window->Listbox1->ListCount(); ++row) {
        EXPECT_NE(cell(row, 3), "0 x 0") << cell(row, 0);
        camera = camera || cell(row, 8) == "\u2713";
    }
    EXPECT_TRUE(camera);
}

}  // namespace
}  // namespace marrowbeck::test
