// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

#include "fileutil/FileReplace.h"
#include "tests/plist/Documents.h"
#include "tests/support/ForkedProcess.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

class Writer : public testing::Test {
  protected:
    Writer() { Shell::SetToolsFolder(MARROWBECK_TOOLS); }

    /// The root's text, saved and read again.
    std::string again() {
        document->Save();
        return outline(documents.Open()->root);
    }

    Documents documents;
    Ref<plist> document = documents.Open();
    Ref<plistDict> root = document->root;
};

}  // namespace

TEST_F(Writer, PrintsEachTypeInItsForm) {
    EXPECT_EQ(again(), "");
    EXPECT_EQ(documents.Entries(), "");
    root->SetString("s<", "a<b>&c");
    root->SetData("d", "YQ==");
    root->SetBoolean("b", false);
    root->AddChild("c");
    root->child("c")->AddArray("empty");
    root->AddArray("a");
    root->child("a")->AppendBoolean(true);
    root->child("a")->AppendDouble(0.25);
    root->child("a")->AppendDict();
    root->child("a")->AppendArray();
    root->child("a")->index(3)->AppendString("x");
    document->Save();
    EXPECT_EQ(documents.Entries(),
              "\t<key>s<</key>\n\t<string>a&lt;b&gt;&c</string>\n"
              "\t<key>d</key>\n\t<data>\n\tYQ==\n\t</data>\n"
              "\t<key>b</key>\n\t<false/>\n"
              "\t<key>c</key>\n\t<dict>\n\t\t<key>empty</key>\n\t\t<array/>\n\t</dict>\n"
              "\t<key>a</key>\n\t<array>\n\t\t<true/>\n\t\t<double>0.25</double>\n\t\t<dict/>\n"
              "\t\t<array>\n\t\t\t<string>x</string>\n\t\t</array>\n\t</array>\n");
    EXPECT_EQ(outline(documents.Open()->root),
              "s<=string:a<b>&c d=data:YQ== b=boolean:false c={empty=[]} a=[0=boolean:true 1=double:0.25 2={} "
              "3=[0=string:x]]");
}

TEST_F(Writer, ReaderAndWriterDisagreeWhereTheyMust) {
    root->SetString("entity", "&lt;");
    root->SetString("lines", "one\ntwo\r\n\tthree");
    root->SetDate("date", New<Date>());
    root->types->Value("odd", "boolean");
    root->values->Value("odd", "yes");
    const std::string date = root->values->Value("date").StringValue().ToStd();
    const std::string tree = "entity=string:< lines=string:one\rtwo\rthree\r date=date:" + date + " odd=boolean:false";
    EXPECT_EQ(again(), tree);
    // A text that ends in a line end has its closing tag on a line of its own, and then stays as it is.
    document = documents.Open();
    EXPECT_EQ(again(), tree);
    document = documents.Open("other");
    document->root->SetString("x><y", "cut");
    document->Save();
    EXPECT_EQ(outline(documents.Open("other")->root), "x>=y</key:(none)");
}

TEST_F(Writer, AKeyThatReadsAsATagIsAKey) {
    const char* const names[] = {"</dict>", "<dict/>", "<b",       "<key>",   "</key>",
                                 "<",       ">",       "</array>", "<true/>", "&lt;"};
    root->AddChild("inner");
    for (const char* name : names) {
        root->SetString(name, "x");
        root->child("inner")->SetBoolean(name, true);
    }
    root->SetString("last", "y");
    const std::string before = outline(root);
    EXPECT_EQ(again(), before);
}

TEST_F(Writer, ANodeMayBeTakenOutWhileAnotherIsPrinted) {
    class Parent : public plistDict {
      public:
        void Add(const String& key, const Ref<plistDict>& node) {
            types->Value(key, "dict");
            childrenNames.Append(key);
            children.Append(node);
        }
    };
    /// In the place of another thread, which would do so at a yield.
    class Remover : public plistDict {
      public:
        explicit Remover(Parent* owner) : owner_(owner) { SetString("inner", "x"); }
        void Write(const Ref<TextOutputStream>& stream, std::int32_t level) override {
            for (const char* key : {"first", "second"}) owner_->Remove(key);
            plistDict::Write(stream, level);
        }

      private:
        Parent* owner_;
    };
    const auto parent = New<Parent>();
    parent->Add("first", New<plistDict>());
    parent->Add("second", New<Remover>(parent.Get()));
    parent->Write(TextOutputStream::Create(documents.Item("lines")), 0);
    EXPECT_EQ(documents.Text("lines"),
              "<key>first</key>\n<dict/>\n<key>second</key>\n<dict>\n\t<key>inner</key>\n"
              "\t<string>x</string>\n</dict>\n");
}

TEST_F(Writer, ATypeWithoutAValueCannotBePrinted) {
    document = documents.Of("\t<key>a</key>\n\t<string/>\n");
    const std::string before = documents.Text();
    EXPECT_THROW(document->Save(), KeyNotFoundException);
    EXPECT_EQ(documents.Text(), before);
}

TEST_F(Writer, AFileThatCannotBeStagedIsLeftAlone) {
    document = documents.Of("\t<key>a</key>\n\t<true/>\n");
    const std::string before = documents.Text();
    plist::StagingFile(documents.Item("nowhere")->Child("staging"));
    try {
        document->Save();
        ADD_FAILURE();
    } catch (const FileReplaceException& failure) {
        EXPECT_EQ(failure.Message(), "Source does not exist.");
    }
    EXPECT_EQ(document->errorMessage, "Could not open file for saving");
    EXPECT_EQ(documents.Text(), before);
    // The message stays over a save that works.
    plist::StagingFile(documents.Item("staging"));
    document->Save(true);
    EXPECT_TRUE(document->error);
    plist::StagingFile(Nil);
    EXPECT_THROW(document->Save(), NilObjectException);
}

TEST_F(Writer, BinaryDocumentsAreConvertedAndConvertedBack) {
    root->SetString("text", "a<b");
    root->SetInteger("n", 42);
    document->Save();
    New<Shell>()->Execute("plutil -convert binary1 " + documents.Item()->ShellPath());
    ASSERT_TRUE(documents.Text().starts_with("bplist00"));

    document = documents.Open();
    EXPECT_TRUE(document->isBinary);
    EXPECT_EQ(document->org->Name(), "doc.plist");
    EXPECT_EQ(document->savePath->Name(), "doc.plist temp");
    EXPECT_EQ(outline(document->root), "text=string:a<b n=integer:42");
    document->root->SetInteger("n", 43);
    document->Save();
    EXPECT_TRUE(document->savePath->Exists());
    document->root->SetInteger("n", 44);
    document->Save(true);
    EXPECT_FALSE(document->savePath->Exists());
    EXPECT_TRUE(documents.Text().starts_with("bplist00"));
    EXPECT_EQ(documents.Open()->root->GetInteger("n"), 44);

    // Once more behind a Cleanup, and in place.
    document->root->SetInteger("n", 45);
    document->SaveAsInvisible(Nil, true);
    EXPECT_EQ(documents.Open()->root->GetInteger("n"), 45);

    // A disk that takes no copy, or a copy but no text, makes no file unreadable.
    for (const rlim_t room : {rlim_t{0}, rlim_t{documents.Item()->Length()}}) {
        EXPECT_TRUE(InForkedProcess([&] {
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{room, room};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            return outline(documents.Open()->root) == "text=string:a<b n=integer:45";
        }));
    }

    // A volume without modes keeps all that it is given.
    EXPECT_TRUE(InForkedProcess([&] {
        if (!RefuseAllButContent()) return false;
        document = documents.Open();
        document->root->SetInteger("n", 46);
        document->Save(true);
        return documents.Text().starts_with("bplist00");
    }));
    EXPECT_EQ(documents.Open()->root->GetInteger("n"), 46);

    // What stands in the way of the copy is somebody's, and takes nothing in.
    documents.Item("doc.plist temp")->Delete();
    documents.folder.Put("doc.plist temp/inside");
    EXPECT_EQ(documents.Open()->errorMessage, "Not a plist file");
    EXPECT_EQ(documents.Item("doc.plist temp")->Count(), 1);
}

TEST_F(Writer, TheOtherMakersReadWhatWasChangedAndSaved) {
    if (std::system("python3 -c 'import plistlib' 2>&-") != 0) GTEST_SKIP() << "Python is not installed";
    const bool withLibplist = std::system("plistutil -v >&- 2>&-") == 0;
    for (const std::string name :
         {"python-xml.plist", "python-binary.plist", "libplist-xml.plist", "libplist-binary.plist"}) {
        const std::string original = std::string(MARROWBECK_TEST_DOCUMENTS) + "/" + name;
        writeFile(documents.Path(name), readFile(original));
        const auto saved = documents.Open(name);
        saved->root->SetString("empty", "now 3 < 4");
        saved->root->child("array")->AppendInteger(7);
        saved->Save(true);
        const std::string check =
            "cd " + documents.folder.Path() +
            (withLibplist ? " && plistutil -i " + name + " -f bin -o other && plistutil -i other -f xml -o other.xml"
                          : " && cp " + name + " other.xml") +
            " && python3 -c \"import plistlib, sys\n" +
            "old, new, other = (plistlib.load(open(name, 'rb')) for name in sys.argv[1:])\n" +
            "old['empty'] = 'now 3 < 4'\nold['array'].append(7)\n" + "sys.exit(old != new or old != other)\" '" +
            original + "' " + name + " other.xml";
        EXPECT_EQ(std::system(check.c_str()), 0) << name;
    }
}
