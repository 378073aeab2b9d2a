// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "framework/core/process/Shell.h"
#include "framework/core/threads/Thread.h"
#include "tests/support/EventLoop.h"

namespace framework {
namespace {

class ResidentTool : public testing::Test {
  protected:
    ~ResidentTool() override { Shell::SetToolsFolder(""); }

    static std::string home() { return std::getenv("HOME"); }

    /// A tools folder with one tool, that stays open if it can.
    static void install(const std::string& script) {
        std::filesystem::create_directory(home() + "/tools");
        std::ofstream(home() + "/tools/mdls") << "#!/bin/sh\n" << script;
        chmod((home() + "/tools/mdls").c_str(), 0755);
        Shell::SetToolsFolder(String(home() + "/tools"), {"mdls"});
    }

    static std::string resultOf(const std::string& command) {
        Shell shell;
        shell.Execute(String(command));
        return std::to_string(shell.ErrorCode()) + " " + shell.Result().ToStd();
    }

    static std::string contentOf(const std::string& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::vector<pid_t> childrenOf(pid_t process) {
        std::ifstream list("/proc/" + std::to_string(process) + "/task/" + std::to_string(process) + "/children");
        return {std::istream_iterator<pid_t>(list), {}};
    }
};

constexpr const char* kWidth = "mdls -name kMDItemPixelWidth -raw ";

TEST_F(ResidentTool, AnswersAsAProcessWouldAndSurvivesItsOwnEnd) {
    const std::string picture = MARROWBECK_TEST_PICTURES "/orient6.jpg";
    const std::vector<std::string> lines = {kWidth + picture,
                                            "mdls " + picture,
                                            kWidth + std::string("/none/such"),
                                            "mdls -name x -raw",
                                            "mdls",
                                            kWidth + home(),
                                            "mdls -stay_open extra",
                                            kWidth + picture};
    Shell::SetToolsFolder(MARROWBECK_TOOLS);
    std::vector<std::string> expected;
    for (const std::string& line : lines) expected.push_back(resultOf(line));
    EXPECT_EQ(expected.front(), "0 32");

    Shell::SetToolsFolder(MARROWBECK_TOOLS, {"mdls"});
    for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(resultOf(lines[i]), expected[i]) << lines[i];
    ASSERT_EQ(childrenOf(getpid()).size(), 1U);
    for (int round = 0; round < 3; ++round) {
        kill(childrenOf(getpid()).front(), SIGKILL);
        EXPECT_EQ(resultOf(lines.front()), expected.front());
    }
}

TEST_F(ResidentTool, AnAnswerAskedAheadCounts) {
    const std::string picture = home() + "/picture";
    const std::string width = kWidth + picture;
    const std::string kind = "mdls -name kMDItemKind -raw " + picture;
    const auto put = [&] { std::filesystem::copy_file(MARROWBECK_TEST_PICTURES "/orient6.jpg", picture); };
    Shell::SetToolsFolder(MARROWBECK_TOOLS, {"mdls"});
    put();
    Shell::Expect(String(width));
    EXPECT_EQ(resultOf(kind), "0 JPEG image");  // what was asked before about the same file is answered before
    std::filesystem::remove(picture);
    EXPECT_EQ(resultOf(width), "0 32");
    EXPECT_EQ(resultOf(width), "1 ");
    // One that is over while something is expected of it, and something expected that is not asked.
    put();
    Shell::Expect(String(width));
    Shell::Expect(String(kind));
    kill(childrenOf(getpid()).front(), SIGKILL);
    EXPECT_EQ(resultOf(width), "0 32");
    Shell::ExpectNothing();
    EXPECT_EQ(resultOf(kind), "0 JPEG image");
}

TEST_F(ResidentTool, OfTwoThatWaitEachHearsItsAnswerThoughTheOtherGoes) {
    std::filesystem::create_directory(home() + "/slow");
    std::filesystem::create_symlink(MARROWBECK_SLOW_LOOK, home() + "/slow/look");
    Shell::SetToolsFolder(String(home() + "/slow"), {"look"});
    std::array<Thread, 2> threads;
    std::string asked;
    const auto bothAre = [&](int state) { return threads[0].State() == state && threads[1].State() == state; };
    for (Thread& ended : threads) {
        for (Thread& thread : threads) {
            thread.OnRun = [] { resultOf("look at /HANG"); };
            thread.Run();
        }
        asked += "at /HANG \nat /HANG \n";
        while (contentOf(home() + "/asked") != asked) marrowbeck::test::RunFor(1);
        ASSERT_TRUE(bothAre(Thread::Waiting));
        ended.Kill();
        kill(childrenOf(getpid()).front(), SIGUSR1);
        EXPECT_TRUE(marrowbeck::test::RunUntil([&] { return bothAre(Thread::NotRunning); }));
    }
}

TEST_F(ResidentTool, IsStartedAgainAsOftenAsOthersEndIt) {
    const std::string log = home() + "/log";
    install("echo \"$*\" >> " + log + "\n[ $(wc -l < " + log +
            ") -lt 5 ] && kill -KILL $$\nexec " MARROWBECK_TOOLS "/mdls \"$@\"\n");
    EXPECT_EQ(resultOf(kWidth + std::string(MARROWBECK_TEST_PICTURES "/orient6.jpg")), "0 32");
    EXPECT_EQ(contentOf(log), "-stay_open\n-stay_open\n-stay_open\n-stay_open\n-stay_open\n");
}

TEST_F(ResidentTool, MakesFilesForTheirOwnerAlone) {
    for (const std::vector<std::string>& resident : {std::vector<std::string>{"sips"}, {}}) {
        Shell::SetToolsFolder(MARROWBECK_TOOLS, resident);
        const std::string made = home() + (resident.empty() ? "/once" : "/resident");
        EXPECT_EQ(resultOf("sips -s format png " MARROWBECK_TEST_PICTURES "/rgb.png --out " + made), "0 ");
        EXPECT_EQ(std::filesystem::status(made).permissions(), std::filesystem::perms(0600)) << made;
    }
}

TEST_F(ResidentTool, IsDoneWithoutWhereItCannotStay) {
    const std::string log = home() + "/log";
    install("echo \"$*\" >> " + log + "\n[ \"$1\" = -stay_open ] && exit 1\necho one at a time\nexit 3\n");
    for (int round = 0; round < 3; ++round) EXPECT_EQ(resultOf("mdls a"), "3 one at a time\n");
    EXPECT_EQ(contentOf(log), "-stay_open\n-stay_open\na\na\na\n");  // once more, and never again

    install("echo no answer at all; cat >/dev/null\n");
    EXPECT_EQ(resultOf("true | mdls a"), "0 no answer at all\n");  // a line for the shell
    std::filesystem::remove(home() + "/tools/mdls");
    Shell::SetToolsFolder(String(home() + "/tools"), {"mdls"});
    EXPECT_EQ(resultOf("mdls a"), "127 ");
}

}  // namespace
}  // namespace framework
