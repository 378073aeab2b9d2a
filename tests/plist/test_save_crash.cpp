// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <random>

#include "fileutil/FileReplace.h"
#include "tests/plist/Documents.h"
#include "tests/support/ForkedProcess.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

/// Whether the volume swaps files, or is made to refuse; or a document in binary form.
enum class Kind { swapping, renaming, binary };

class Crash : public testing::TestWithParam<Kind> {
  protected:
    Crash() : oldText(save("old")), newText(save("new")) { writeFile(documents.Path(), oldText); }

    static void fill(const Ref<plist>& document, const String& what) {
        for (int i = 0; i < 200; ++i) document->root->SetString("key " + Str(i), what);
    }
    std::string save(const String& what) const {
        const auto document = documents.Open();
        fill(document, what);
        document->Save();
        if (GetParam() == Kind::binary) {
            Shell::SetToolsFolder(MARROWBECK_TOOLS);
            New<Shell>()->Execute("plutil -convert binary1 " + documents.Item()->ShellPath());
        }
        return documents.Text();
    }
    static bool settle() { return GetParam() != Kind::renaming || RefuseExchange(); }
    /// Gets ready for a save of the new document.
    Ref<plist> prepare() const {
        if (!settle()) return Nil;
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

void reset(const Documents& documents, const std::string& text) {
    documents.Item("staging")->Delete();
    writeFile(documents.Path(), text);
}

}  // namespace

using CrashOfAnyForm = Crash;

TEST_P(CrashOfAnyForm, AtAnyMomentLeavesTheOldFileOrTheNew) {
    std::mt19937 random(4711);
    constexpr int kRounds = 150;
    int seenNew = 0;
    const auto document = documents.Open();
    fill(document, "new");
    // Moments within the first few saves, however long one takes here.
    const auto start = std::chrono::steady_clock::now();
    document->Save();
    const std::chrono::microseconds oneSave =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    std::uniform_int_distribution<useconds_t> moment(0, static_cast<useconds_t>(5 * oneSave.count()));
    for (int round = 0; round < kRounds; ++round) {
        reset(documents, oldText);
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t child = Fork([&] {
            if (!settle()) return false;
            ::close(ready[1]);
            while (true) document->Save();
            return true;
        });
        ::close(ready[1]);
        char none = 0;
        EXPECT_EQ(::read(ready[0], &none, 1), 0);
        ::close(ready[0]);
        ::usleep(moment(random));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ASSERT_TRUE(isWhole()) << "round " << round << "\n" << documents.Text();
        seenNew += documents.Text() == newText ? 1 : 0;
    }
    EXPECT_GT(seenNew, 0);
    EXPECT_LT(seenNew, kRounds);
}

TEST_P(Crash, AtEachSystemCallLeavesTheOldFileOrTheNew) {
    bool ended = false;
    for (int stop = 1; !ended; ++stop) {
        reset(documents, oldText);
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

namespace {

std::string nameOf(const testing::TestParamInfo<Kind>& kind) {
    constexpr const char* kNames[] = {"Swapping", "Renaming", "Binary"};
    return kNames[static_cast<int>(kind.param)];
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Volumes, Crash, testing::Values(Kind::swapping, Kind::renaming), nameOf);
INSTANTIATE_TEST_SUITE_P(Forms, CrashOfAnyForm, testing::Values(Kind::swapping, Kind::renaming, Kind::binary), nameOf);
