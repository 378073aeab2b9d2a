// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/CommandLine.h"
#include "app/FolderListing.h"
#include "tests/catalogue/CatalogueTest.h"

namespace marrowbeck::test {
namespace {

struct Printed {
    std::string records;
    std::string complaints;
    int status;
};

class FolderListingTest : public CatalogueTest {
  protected:
    Printed print(const FolderListing& listing) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = listing.Print();
        return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr(), status};
    }
};

TEST_F(FolderListingTest, EachImageIsARecordAndWhatCannotBeReadIsToldBesides) {
    const std::string odd = addFile("a\"b,\xFF.jpg", 1024 * 1024);
    auto fields = plainFields();
    fields[3] = "Two\nlines";
    answer(odd, fields);
    const std::string bad = addFile("bad.jpg");
    answer(bad, plainFields("(null)", "(null)"));
    addFile("notes.txt");
    found({odd, bad});

    const std::string heading =
        "Filename,Size(MB),Comp. Size(MB),Pixels,Tagged Profile,Copyright,Keywords,Kind,EXIF,Format,Caption,Path\n";
    for (const bool subfolders : {false, true}) {
        const Printed csv = print({String(pictures), subfolders, FolderListing::Form::Csv});
        EXPECT_EQ(csv.records, heading + "\"a\"\"b,\xFF.jpg\",34.33,1.00,4000 x 3000,,,,8 bit JPEG image,,Landscape," +
                                   "\"Two\nlines\",\"" + pictures + "/a\"\"b,\xFF.jpg\"\n" +
                                   "bad.jpg,.00,.00,0 x 0,,,,8 bit JPEG image,,Square,," + bad + "\n");
        EXPECT_EQ(csv.complaints, "marrowbeck: " + bad + ": No picture could be read in it\n");
        EXPECT_EQ(csv.status, 1);
    }
    const Printed json = print({String(pictures), true, FolderListing::Form::Json});
    EXPECT_TRUE(json.records.starts_with("[\n{\"Filename\": \"a\\\"b,\uFFFD.jpg\", \"Size(MB)\": \"34.33\", "))
        << json.records;
    EXPECT_NE(json.records.find("\"Caption\": \"Two\\nlines\", \"Path\": "), std::string::npos) << json.records;
    EXPECT_NE(json.records.find("\"},\n{\"Filename\": \"bad.jpg\""), std::string::npos) << json.records;
    EXPECT_TRUE(json.records.ends_with("\"}\n]\n")) << json.records;
}

TEST_F(FolderListingTest, TheCommandLineIsUnderstoodAndWhatIsNoFolderIsTold) {
    const auto answer = [](std::vector<const char*> words) {
        words.insert(words.begin(), "marrowbeck");
        return AnswerCommandLine(static_cast<int>(words.size()), const_cast<char**>(words.data())).value_or(-1);
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(answer({"--list", "/no/such", "--subfolders", "--format", "json"}), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "marrowbeck: /no/such: No such file or directory\n");
    EXPECT_EQ(answer({"--format", "xml", "--list", "/"}), 2);
    EXPECT_EQ(answer({"--", "--list"}), -1);
}

}  // namespace
}  // namespace marrowbeck::test
