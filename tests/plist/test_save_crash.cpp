// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "fileutil/FileReplace.h"
#include "tests/plist/Documents.h"
#include "tests/support/ForkedProcess.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

/// On a volume that can do all, or on one that keeps names and bytes alone.
class Crash : public testing::TestWithParam<bool> {
  protected:
    Crash() : oldText(save("old")), newText(save("new")) { writeFile(documents.Path(), oldText); }

    static void fill(const Ref<plist>& document, const String& what) {
        for (int i = 0; i < 200; ++i) document->root->SetString("key " + Str(i), what);
    }
    std::string save(const String& what) const {
        const auto document = documents.Open();
        fill(document, what);
        document->Save();
        return documents.Text();
    }
    /// Gets ready for a save of the new document.
    Ref<plist> prepare() const {
        if (!GetParam() && !RefuseAllButContent()) return Nil;
        auto document = documents.Open();
        fill(document, "new");
        return document;
    }
    bool isWhole() const {
        const std::string text = documents.Text();
        return text == oldText || text == newText;
    }

    Documents documents;
    std::string oldText;
    std::string newText;
};

}  // namespace

TEST_P(Crash, AtEachSystemCallLeavesTheOldFileOrTheNew) {
    bool ended = false;
    for (int stop = 1; !ended; ++stop) {
        documents.Item("staging")->Delete();
        writeFile(documents.Path(), oldText);
        const pid_t child = Fork([this] {
            const auto document = prepare();
            if (!document || ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) return false;
            ::raise(SIGSTOP);
            document->Save();
            return true;
        });
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFSTOPPED(status)) GTEST_SKIP() << "processes may not be traced here";
        // Twice for each call: as it is made and as it returns.
        for (int i = 0; i < stop && WIFSTOPPED(status); ++i) {
            ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
            ::waitpid(child, &status, 0);
        }
        ended = WIFEXITED(status);
        if (!ended) {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
        } else {
            EXPECT_EQ(WEXITSTATUS(status), 0);
            EXPECT_EQ(documents.Text(), newText);
        }
        ASSERT_TRUE(isWhole()) << "stop " << stop << "\n" << documents.Text();
        ASSERT_LT(stop, 1000);
    }
}

TEST_P(Crash, OnAFullDiskTheOldFileStays) {
    EXPECT_TRUE(InForkedProcess([this] {
        const auto document = prepare();
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{newText.size() - 1, newText.size() - 1};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            document->Save();
            return false;
        } catch (const FileReplaceException& failure) {
            return failure.Message() == "Source does not exist." && document->error &&
                   document->errorMessage == "Could not write file for saving";
        }
    }));
    EXPECT_EQ(documents.Text(), oldText);
}

TEST_P(Crash, InAFolderThatCannotBeWrittenTheOldFileStays) {
    const std::string staging = documents.Path("open");
    ::mkdir(staging.c_str(), 0777);
    ::chmod(staging.c_str(), 0777);
    ::chmod(documents.folder.Path().c_str(), 0555);
    plist::StagingFile(documents.Item("open")->Child("staging"));
    EXPECT_TRUE(InForkedProcess([this] {
        const auto document = prepare();
        if (!BecomeNobody()) return false;
        try {
            document->Save();
            return false;
        } catch (const FileReplaceException& failure) {
            return failure.ErrorNumber() == EACCES;
        }
    }));
    ::chmod(documents.folder.Path().c_str(), 0700);
    EXPECT_EQ(documents.Text(), oldText);
}

INSTANTIATE_TEST_SUITE_P(WholeVolume, Crash, testing::Bool());
