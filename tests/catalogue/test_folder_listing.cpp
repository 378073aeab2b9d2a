// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>

#include <algorithm>

#include "app/CommandLine.h"
#include "app/FolderListing.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/ForkedProcess.h"

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
        EXPECT_EQ(csv.status, 0) << "the list is whole";
    }
    const Printed json = print({String(pictures), true, FolderListing::Form::Json});
    EXPECT_TRUE(json.records.starts_with("[\n{\"Filename\": \"a\\\"b,\uFFFD.jpg\", \"Size(MB)\": \"34.33\", "))
        << json.records;
    EXPECT_NE(json.records.find("\"Caption\": \"Two\\nlines\", \"Path\": "), std::string::npos) << json.records;
    EXPECT_NE(json.records.find("\"},\n{\"Filename\": \"bad.jpg\""), std::string::npos) << json.records;
    EXPECT_TRUE(json.records.ends_with("\"}\n]\n")) << json.records;
}

TEST_F(FolderListingTest, AListThatMayNotBeWholeIsTold) {
    const std::string good = addFile("good.jpg");
    answer(good, plainFields());
    const std::string dumb = pictures + "/sub/dumb.jpg";
    const std::string gone = pictures + "/gone.jpg";
    struct Case {
        std::string second;
        int searchStatus;
        std::string complaint;
    };
    addFile("sub/dumb.jpg");
    for (const Case& each : {Case{gone, 0, gone + ": No such file or directory\n"},
                             Case{dumb, 0, dumb + ": Nothing could be learned of it\n"}, Case{good, 1, ""}}) {
        found({good, each.second}, each.searchStatus);
        const Printed csv = print({String(pictures), true});
        EXPECT_EQ(csv.status, 1);
        EXPECT_EQ(std::count(csv.records.begin(), csv.records.end(), '\n'), 3) << csv.records;
        EXPECT_TRUE(csv.complaints.ends_with(each.complaint)) << csv.complaints;
    }
    EXPECT_THAT(commands(), testing::Contains(testing::StartsWith("mdfind -0 -strict -onlyin ")));
    EXPECT_TRUE(InForkedProcess([this] {
        return RefuseCall(SYS_getdents64, EIO) &&
               print({String(pictures)}).complaints.ends_with("Input/output error\n");
    }));
}

TEST_F(FolderListingTest, TheCommandLineIsUnderstoodAndWhatIsNoFolderIsTold) {
    struct Case {
        std::vector<const char*> words;
        int status;  ///< -1 where the window opens
        std::string complaint;
    };
    const std::string file = addFile("file");
    for (const Case& each : std::vector<Case>{
             {{"--list", "/no/such", "--subfolders", "--format", "json"}, 1, "/no/such: No such file or directory"},
             {{"--format=json", "--list=/no/such"}, 1, "/no/such: No such file or directory"},
             {{"--list", file.c_str()}, 1, file + ": Not a directory"},
             {{"--list", ""}, 1, ": No such file or directory"},
             {{"--format", "xml", "--list", "/"}, 2, "--format is csv or json"},
             {{"--list"}, 2, "--list needs a folder"},
             {{"/", "--list", "/"}, 2, "--list goes with --subfolders and --format, not with /"},
             {{"--subfolders=no", "--list", "/"}, 2, "--subfolders takes no value"},
             {{"--subfolders"}, 2, "--subfolders goes with --list"},
             {{"/", "--format=json"}, 2, "--format goes with --list"},
             {{"--bogus"}, 2, "--bogus is no option"},
             {{"-v", "--list", "/"}, 2, "-v is no option"},
             {{"--platform=xcb"}, 2, "--platform has its value in the next word"},
             {{"-session", "a_b", "-platform", "xcb", "/"}, -1, ""},
             {{"--", "--list"}, -1, ""},
         }) {
        std::vector<const char*> words = each.words;
        words.insert(words.begin(), "marrowbeck");
        testing::internal::CaptureStderr();
        const auto status = AnswerCommandLine(static_cast<int>(words.size()), const_cast<char**>(words.data()));
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(status.value_or(-1), each.status) << each.complaint;
        const std::string end = each.status == 2 ? "; see marrowbeck --help\n" : "\n";
        EXPECT_EQ(told, each.complaint.empty() ? "" : "marrowbeck: " + each.complaint + end);
    }
}

}  // namespace
}  // namespace marrowbeck::test
