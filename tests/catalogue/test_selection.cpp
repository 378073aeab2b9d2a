// SPDX-License-Identifier: GPL-2.0-or-later
#include <QImage>
#include <QTableView>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "app/Preferences.h"
#include "catalogue/ThumbnailCache.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/RecordingOpener.h"

namespace marrowbeck::test {
namespace {

using Texts = std::vector<std::string>;

class Selection : public CatalogueTest {
  protected:
    Selection() {
        window->Subfoldercheckbox->Value(false);
        window->SegmentedControl1->Items(Window1::kAllItem)->Selected(true);
        QImage(240, 180, QImage::Format_RGB32).save(QString::fromStdString(root + "/thumbnail.png"));
        // Notes each source and gives the same picture for all, but for files called bad.
        replaceTool("sips", "echo \"sips $*\" >> " + root +
                                "/log\ncase \"$*\" in *bad*) exit 1;; esac\nfor last; do :; done\ncp " + root +
                                "/thumbnail.png \"$last\"\n");
    }

    std::string addImage(const std::string& name, const std::string& width = "4000",
                         const std::string& height = "3000") {
        const std::string path = addFile(name);
        answer(path, plainFields(width, height));
        return path;
    }
    /// Waits until selection, timers and the preview's thread have come to rest.
    void rest() {
        RunUntil([this] {
            return window->PreviewTimer->Mode() == Timer::ModeOff && window->selectRowTimer->Mode() == Timer::ModeOff &&
                   window->PicturescaleThread1->State() == Thread::NotRunning;
        });
    }
    /// The command lines of sips alone.
    Texts previews() {
        Texts lines;
        for (const std::string& line : commands()) {
            if (line.starts_with("sips ")) lines.push_back(line);
        }
        return lines;
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window->Listbox1->Native(), code, modifiers);
    }
};

TEST_F(Selection, TheFirstRowIsShownByItself) {
    addImage("b.jpg");
    const std::string path = addImage("a picture.jpg");
    const std::string caption(5000, 'c');
    std::vector<std::string> fields = plainFields();
    fields[3] = caption;
    answer(path, fields);
    search();
    commands();
    rest();
    EXPECT_EQ(window->Listbox1->ListIndex(), 0);
    EXPECT_EQ(window->DataLabel->Text().ToStd(),
              "Name: a picture.jpg\nColorSpace: RGB\nKind: 8 bit JPEG image\nCompressed file size: .00MB\n"
              "Image size: 34.33MB\nImage dimensions: 4000 x 3000 pixels\n\n\n\nCaption: " +
                  caption + "\nOrientation: Landscape");
    EXPECT_EQ(window->EXIFTextArea->Text(), String(""));
    ASSERT_TRUE(window->pic);
    EXPECT_EQ(window->pic->Width(), 240);
    EXPECT_FALSE(window->Canvas1->Backdrop());
    EXPECT_TRUE(window->MyToolbar->ShowImageTB->Enabled());
    EXPECT_TRUE(window->MyToolbar->ShowFileTB->Enabled());
    EXPECT_TRUE(ThumbnailEntry(New<FolderItem>(String(path))).File()->Exists());
}

TEST_F(Selection, TheFirstRowIsShownWhileRowsKeepComing) {
    for (int i = 10; i < 39; ++i) addImage(std::to_string(i) + ".jpg");
    addImage("39 is a name that is longer than those before it.jpg");
    replaceTool("mdls", "for last; do :; done\nsleep 0.02\nexec cat \"$last.image\"\n");
    window->Width(1600);
    const auto nameWidth = [this] { return static_cast<QTableView*>(window->Listbox1->Native())->columnWidth(0); };
    const int before = nameWidth();
    App::Current()->Event_OpenDocument(New<FolderItem>(String(pictures)));
    ASSERT_TRUE(RunUntil([this] { return window->pic != Nil; }));
    EXPECT_NE(window->SizeThread1->State(), Thread::NotRunning);
    EXPECT_LT(window->Listbox1->ListCount(), 30);
    const int first = nameWidth();
    EXPECT_LT(first, before) << "the columns are shared by the first rows";
    runToEnd();
    EXPECT_EQ(window->Listbox1->ListCount(), 30);
    EXPECT_GT(nameWidth(), first) << "and once more by all";
}

TEST_F(Selection, OnlyTheRowAtWhichTheKeysComeToRestGetsAPreview) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) addImage(name);
    search();
    rest();
    commands();
    for (int i = 0; i < 3; ++i) key(Qt::Key_Down);
    rest();
    EXPECT_EQ(window->Listbox1->ListIndex(), 3);
    const Texts lines = previews();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines.front().find("/d.jpg --out "), std::string::npos);
    key(Qt::Key_Up);
    rest();
    key(Qt::Key_Down);
    rest();
    EXPECT_EQ(previews().size(), 1U) << "the second time the entry is there";
}

TEST_F(Selection, SeveralRowsEmptyThePanels) {
    addImage("a.jpg");
    addImage("b.jpg");
    search();
    rest();
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(window->Listbox1->SelCount(), 2);
    EXPECT_EQ(window->DataLabel->Text(), String(""));
    EXPECT_FALSE(window->pic);
    EXPECT_FALSE(window->Canvas1->Backdrop());
    EXPECT_FALSE(window->MyToolbar->ShowImageTB->Enabled());
    EXPECT_FALSE(window->MyToolbar->ShowFileTB->Enabled());
    EXPECT_EQ(window->PreviewTimer->Mode(), Timer::ModeOff);
}

TEST_F(Selection, ASortMovesTheRowAndMakesNoPreview) {
    addImage("a.jpg", "100", "100");
    addImage("b.jpg", "4000", "3000");
    search();
    rest();
    commands();
    const String before = window->DataLabel->Text();
    window->Listbox1->HeadingIndex(3);
    window->Listbox1->ColumnSortDirection(3, -1);
    window->Listbox1_SortColumn(3);
    window->Listbox1->Sort();
    EXPECT_EQ(names(), (Texts{"b.jpg", "a.jpg"}));
    EXPECT_EQ(window->Listbox1->Text(), String("a.jpg"));
    EXPECT_EQ(window->PreviewTimer->Mode(), Timer::ModeOff);
    EXPECT_TRUE(window->DataLabel->Text() == before);
    rest();
    EXPECT_TRUE(previews().empty());
}

TEST_F(Selection, SizesAndPixelsSortAsNumbersAndNeverAsEqual) {
    addImage("small.jpg", "400", "400");
    addImage("wide.jpg", "4000", "100");
    addImage("large.jpg", "3000", "3000");
    search();
    window->Listbox1->HeadingIndex(3);
    window->Listbox1->ColumnSortDirection(3, 1);
    window->Listbox1->Sort();
    EXPECT_EQ(names(), (Texts{"small.jpg", "large.jpg", "wide.jpg"}));
    int result = 0;
    EXPECT_TRUE(window->Listbox1_CompareRows(0, 0, 2, result));
    EXPECT_EQ(result, -1);
    EXPECT_FALSE(window->Listbox1_CompareRows(0, 1, 0, result)) << "texts are the list's own matter";
}

TEST_F(Selection, APreviewThatCannotBeMadeLeavesTheCanvasEmptyAndIsTriedAgain) {
    const std::string path = addImage("bad.jpg");
    search();
    rest();
    EXPECT_FALSE(window->pic);
    EXPECT_FALSE(window->Canvas1->Backdrop());
    EXPECT_FALSE(ThumbnailEntry(New<FolderItem>(String(path))).File()->Exists());
    commands();
    window->PreviewTimer_Action(*window->PreviewTimer);
    rest();
    EXPECT_EQ(previews().size(), 1U);
    EXPECT_TRUE(messages.empty());
}

TEST_F(Selection, AFileThatChangesOrGoesKeepsItsPreviewUntilAReload) {
    const std::string shown = addImage("a.jpg");
    const std::string other = addImage("b.jpg");
    search();
    rest();
    std::filesystem::remove(shown);
    std::filesystem::remove(other);
    key(Qt::Key_Down);
    rest();
    key(Qt::Key_Up);
    rest();
    EXPECT_TRUE(window->pic);
    EXPECT_NE(window->DataLabel->Text().ToStd().find("Name: a.jpg"), std::string::npos);
    window->OpenPhoto("");
    window->ShowFile("");
    window->MyToolbar_Action(*window->MyToolbar, window->MyToolbar->RefreshTB);
    runToEnd();
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(messages.empty());
}

TEST_F(Selection, ThumbnailsAreNamedBySourceAndNeverEnlarged) {
    const ThumbnailEntry first(New<FolderItem>("/pictures/one/it's.jpg"));
    const ThumbnailEntry second(New<FolderItem>("/pictures/two/it's.jpg"));
    EXPECT_NE(first.File()->Name().ToStd(), second.File()->Name().ToStd());
    EXPECT_TRUE(
        first.Command(241, 10).ToStd().starts_with("sips -s format png -Z 240 /pictures/one/it\\'s.jpg --out "));
    EXPECT_TRUE(first.Command(240, 240).ToStd().starts_with("sips -s format png /pictures/one/"));
    EXPECT_TRUE(first.Command(0, 0).ToStd().starts_with("sips -s format png /pictures/one/"));
    EXPECT_TRUE(first.Command(9, 9).ToStd().ends_with("it\\'s.jpg"));
}

TEST_F(Selection, TheLongestNameLeavesRoomForItsHash) {
    useRealTools();
    std::string name = "x.jpg";
    while (name.size() < 255) name.insert(0, "ö");
    std::filesystem::copy_file(MARROWBECK_SAMPLES "/Evening tower.jpg", pictures + "/" + name);
    search();
    rest();
    EXPECT_EQ(names(), Texts{name});
    ASSERT_TRUE(RunUntil([this] { return window->PicturescaleThread1->State() == Thread::NotRunning; }));
    EXPECT_TRUE(window->pic);
}

TEST_F(Selection, OpeningNeedsAPreviewAndEscapesTheColonsOfThePath) {
    const std::string folder = root + "/a:b";
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/c.jpg") << "x";
    answer(folder + "/c.jpg", plainFields());
    const RecordingOpener opener;
    search(folder);
    rest();
    const Ref<Picture> preview = window->pic;
    ASSERT_TRUE(preview);
    window->pic = Nil;
    window->Listbox1_DoubleClick();
    RunFor(200);
    EXPECT_FALSE(opener.WasCalled());
    window->pic = preview;
    window->Listbox1_DoubleClick();
    EXPECT_EQ(opener.Call(), "file://" + root + "/a%3Ab/c.jpg\n");
    std::filesystem::remove(folder + "/c.jpg");
    window->OpenPhoto("");
    RunFor(200);
    EXPECT_FALSE(opener.WasCalled()) << "a file that has gone is not opened";
}

TEST_F(Selection, TheContextualMenuOffersBothCommandsAlways) {
    const Ref<MenuItem> base = New<MenuItem>();
    EXPECT_TRUE(window->Listbox1_ConstructContextualMenu(base, 0, 0));
    ASSERT_EQ(base->Count(), 2);
    EXPECT_EQ(base->Item(0)->Text(), String("Highlight file in Finder"));
    EXPECT_EQ(base->Item(1)->Text(), String("Open image in viewer"));
    EXPECT_FALSE(window->Listbox1_ContextualMenuAction(base->Item(0)));
}

}  // namespace
}  // namespace marrowbeck::test
