// SPDX-License-Identifier: GPL-2.0-or-later
#include <QImage>
#include <QTableView>
#include <filesystem>
#include <fstream>

#include "app/Preferences.h"
#include "catalogue/ThumbnailCache.h"
#include "tests/catalogue/CatalogueTest.h"

namespace marrowbeck::test {
namespace {

using Texts = std::vector<std::string>;

class Selection : public CatalogueTest {
  protected:
    Selection() {
        window->Subfoldercheckbox->Value(false);
        window->SegmentedControl1->Items(Window1::kAllItem)->Selected(true);
        QImage(240, 180, QImage::Format_RGB32).save(QString::fromStdString(root + "/thumbnail.png"));
        replaceTool("sips", "for last; do :; done\ncp " + root + "/thumbnail.png \"$last\"\n");
    }

    /// Waits until selection, timers and the preview's thread have come to rest.
    void rest() {
        RunUntil([this] {
            return window->PreviewTimer->Mode() == Timer::ModeOff && window->selectRowTimer->Mode() == Timer::ModeOff &&
                   window->PicturescaleThread1->State() == Thread::NotRunning;
        });
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
    rest();
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

}  // namespace
}  // namespace marrowbeck::test
