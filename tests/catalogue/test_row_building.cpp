// SPDX-License-Identifier: GPL-2.0-or-later

#include "catalogue/ImageFacts.h"
#include "tests/catalogue/CatalogueTest.h"

namespace marrowbeck::test {
namespace {

class RowBuilding : public CatalogueTest {
  protected:
    RowBuilding() { window->Subfoldercheckbox->Value(false); }
};

TEST_F(RowBuilding, FillsEveryCellHelpTagAndTagOfAPhotograph) {
    const std::string path = addFile("sea shore.jpg", 2621440);
    answer(path, {"64", "RGB", "(c) Ann", "Two\nlines", "2.3", "1", "(\n    sea,\n    \"the  sky\",\n    sun (set)\n)",
                  "JPEG image", "3000", "4000", "Adobe RGB"});
    answerCamera(path, {"Marlowe", "Field 7", "0.004", "2.8", "50", "400"});
    search();
    ASSERT_EQ(names(), std::vector<std::string>{"sea shore.jpg"});
    const std::pair<const char*, const char*> columns[] = {
        {"sea shore.jpg", "Name: sea shore.jpg"},
        {"68.66", "Image size: 68.66MB"},
        {"2.50", "Compressed file size: 2.50MB"},
        {"4000 x 3000", "Image dimensions: 4000 x 3000 pixels"},
        {"Adobe RGB", "Color Profile: Adobe RGB"},
        {"(c) Ann", "Copyright: (c) Ann"},
        {"sea,\"thesky\",sun set", "Keywords: sea,\"thesky\",sun set"},
        {"16 bit JPEG image+ Alpha", "Kind: 16 bit JPEG image+ Alpha"},
        {"\u2713", "Marlowe Field 7\nISO400\nF2.8\n1/250s\n50.0mm"},
        {"Landscape", "Orientation: Landscape"},
        {"Two\nlines", "Caption: Two\nlines"},
    };
    for (int column = 0; column < 11; ++column) {
        EXPECT_EQ(cell(0, column), columns[column].first);
        EXPECT_EQ(helpTag(0, column), columns[column].second);
    }
    EXPECT_EQ(window->Listbox1->CellTag(0, 0).StringValue(), String("RGB"));
    const Ref<FolderItem> again = GetFolderItem(window->Listbox1->CellTag(0, 1).StringValue(), 0);
    EXPECT_EQ(again->AbsolutePath().ToStd(), path);
    EXPECT_EQ(commands(),
              (std::vector<std::string>{
                  "mdls -name kMDItemColorSpace -name kMDItemPixelWidth -name kMDItemPixelHeight -name "
                  "kMDItemProfileName -name kMDItemCopyright -name kMDItemKind -name kMDItemKeywords -name "
                  "kMDItemBitsPerSample -name kMDItemEXIFVersion -name kMDItemHasAlphaChannel -name "
                  "kMDItemDescription -raw " +
                      path,
                  "mdls -name kMDItemExposureTimeSeconds -name kMDItemFNumber -name kMDItemFocalLength -name "
                  "kMDItemISOSpeed -name kMDItemAcquisitionMake -name kMDItemAcquisitionModel -raw " +
                      path}));
}

TEST_F(RowBuilding, AFileOfWhichNothingIsKnownGetsAWholeRow) {
    answer(addFile("odd.png", 524288), std::vector<std::string>(11, "(null)"));
    search();
    const std::vector<std::string> cells = {"odd.png", ".00", ".50", "0 x 0", "", "", "", " (null)", "", "Square", ""};
    for (int column = 0; column < 11; ++column) EXPECT_EQ(cell(0, column), cells[static_cast<std::size_t>(column)]);
    EXPECT_EQ(helpTag(0, 7), "Kind:  (null)");
    for (const int column : {4, 5, 6, 8, 10}) EXPECT_EQ(helpTag(0, column), "");
    EXPECT_EQ(commands().size(), 1U) << "nothing is asked about the camera of a file without EXIF data";
    EXPECT_EQ(window->totalnumber->Text(), String("Image Files: 1"));
}

TEST_F(RowBuilding, AnAnswerThatIsTooShortLeavesTheRowAsFarAsItGotAndEndsTheSearch) {
    answer(addFile("a.jpg"), {"32", "RGB", "Ann", "A caption", "(null)"});
    answer(addFile("b.jpg"), plainFields());
    search();
    EXPECT_EQ(names(), std::vector<std::string>{"a.jpg"});
    EXPECT_EQ(window->Listbox1->CellTag(0, 0).StringValue(), String("RGB"));
    EXPECT_EQ(cell(0, 10), "A caption");
    EXPECT_EQ(cell(0, 9), "");
    EXPECT_TRUE(messages.empty());
    // The search is over where it stood.
    EXPECT_TRUE(window->ProgressWheel1->Visible());
    EXPECT_TRUE(window->MyToolbar->StopTB->Enabled());
    EXPECT_FALSE(window->SegmentedControl1->Enabled());
    window->MyToolbar_Action(*window->MyToolbar, window->MyToolbar->StopTB);
    EXPECT_FALSE(window->ProgressWheel1->Visible());
    EXPECT_FALSE(window->MyToolbar->StopTB->Enabled());
    EXPECT_TRUE(window->SegmentedControl1->Enabled());
}

TEST_F(RowBuilding, AFailureOnTheCameraLeavesTheRestOfTheRow) {
    std::vector<std::string> fields = plainFields();
    fields[4] = "2.3";
    answer(addFile("a.jpg"), fields);
    search();
    EXPECT_EQ(messages, std::vector<std::string>{"Error code: 1"});
    EXPECT_EQ(cell(0, 8), "\u2713");
    EXPECT_EQ(helpTag(0, 8), "");
    EXPECT_EQ(cell(0, 7), "8 bit JPEG image");
    EXPECT_EQ(window->totalnumber->Text(), String("No Image Files"));
    EXPECT_EQ(window->selectRowTimer->Mode(), Timer::ModeOff);
}

TEST(ImageFacts, ReckonsSizesInThirtyTwoBits) {
    const auto shown = [](int width, int height, bool sixteenBit) {
        return Format(ImageFacts::UncompressedSize(width, height, sixteenBit), "###.00").ToStd();
    };
    EXPECT_EQ(shown(4000, 3000, false), "34.33");
    EXPECT_EQ(shown(4000, 3000, true), "68.66");
    EXPECT_EQ(shown(0, 0, false), ".00");
    EXPECT_EQ(shown(40000, 40000, false), "481.64") << "4,800,000,000 bytes wrap around to 505,032,704";
    EXPECT_EQ(shown(30000, 30000, false), "-1521.08");
}

TEST(ImageFacts, WritesCameraDataAsPhotographersDo) {
    const auto text = [](const char* exposure, const char* aperture, const char* focal, const char* iso) {
        return ImageFacts::CameraText({"M", "(null)", exposure, aperture, focal, iso}).ToStd();
    };
    EXPECT_EQ(text("0.004", "2.8", "50", "400"), "M \nISO400\nF2.8\n1/250s\n50.0mm");
    EXPECT_EQ(text("0.1", "11", "4.25", "(null)"), "M \n\nF11.0\n.1s\n4.3mm");
    EXPECT_EQ(text("2", "(null)", "(null)", "(null)"), "M \n\n\n2.0s\n");
    EXPECT_NE(text("0", "1", "1", "1").find("1/"), std::string::npos) << "a division by zero raises nothing";
    EXPECT_THROW(ImageFacts::CameraText({"M", "m", "1", "1", "1"}), OutOfBoundsException);
}

TEST(ImageFacts, TellsDepthOrientationAndKeywords) {
    EXPECT_EQ(ImageFacts::DepthLabel("24"), String());
    EXPECT_EQ(ImageFacts::DepthLabel("(null)"), String());
    EXPECT_EQ(ImageFacts::Orientation(3000, 4000), String("Portrait"));
    EXPECT_EQ(ImageFacts::Orientation(7, 7), String("Square"));
    EXPECT_EQ(ImageFacts::WithoutNull("(null) and (null)").ToStd(), " and (null)") << "the first one only";
    EXPECT_EQ(ImageFacts::CleanKeywords("(null)").ToStd(), "");
    EXPECT_EQ(ImageFacts::CleanKeywords("(\n    sea,\r\n    sky\n)").ToStd(), "sea,sky");
}

}  // namespace
}  // namespace marrowbeck::test
