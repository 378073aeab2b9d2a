#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "framework/core/CommandLine.h"
#include "framework/core/Shell.h"
#include "framework/core/Thread.h"
#include "tests/support/EventLoop.h"

namespace framework {
namespace {

using marrowbeck::test::RunUntil;

std::string resultOf(const std::string& command) {
    Shell shell;
    shell.Execute(String(command));
    return shell.Result().ToStd();
}

int statusOf(const std::string& command) {
    Shell shell;
    shell.Execute(String(command));
    return shell.ErrorCode();
}

TEST(Shell, GivesOutputByteForByteAndTheExitStatus) {
    EXPECT_EQ(resultOf("printf 'a\\0b\\0'"), std::string("a\0b\0", 4));
    EXPECT_EQ(resultOf("echo seen; echo unseen >&2"), "seen\n");
    EXPECT_EQ(resultOf("head -c 3000000 /dev/zero").size(), 3000000U);
    EXPECT_EQ(statusOf("exit 3"), 3);
    EXPECT_EQ(statusOf("kill -TERM $$"), 128 + SIGTERM);
    EXPECT_EQ(statusOf("there-is-no-such-command"), 127);
    EXPECT_EQ(statusOf("cat /there/is/no/such/file"), 1);
    Shell shell;
    shell.Execute("echo first; exit 2");
    shell.Execute("printf second");
    EXPECT_EQ(shell.ErrorCode(), 0);
    EXPECT_EQ(shell.Result().ToStd(), "second");
}

TEST(Shell, StartsPlainLinesDirectlyWithTheSameResultAsThroughTheShell) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(internal::PlainWords("mdls -name A  -raw /a\\ b/c\\$\\(d\\)"),
              (Words{"mdls", "-name", "A", "-raw", "/a b/c$(d)"}));
    EXPECT_EQ(internal::PlainWords("cat /a'\n'b"), (Words{"cat", "/a\nb"}));
    EXPECT_EQ(internal::PlainWords("cat ''"), (Words{"cat", ""}));
    for (const char* line : {"", "a | b", "a; b", "a $b", "a `b`", "a > b", "*image", "a *b", "~/a", "A=1 b", "cd /",
                             "a \"b\"", "a 'b", "a\\", "a & ", "a # b", "a\nb", "if x"}) {
        EXPECT_FALSE(internal::PlainWords(line)) << line;
    }
    const std::string awkward = "/bin/printf %s\\\\n \\ \\*\\?\\[\\]\\~\\#\\=\\'\\\"\\\\ a=b \xC3\xA9\xFF";
    ASSERT_TRUE(internal::PlainWords(awkward));
    EXPECT_EQ(resultOf(awkward), resultOf("true; " + awkward));
    // A script without a first line that names its shell is no program to the system, but is one to a shell.
    const std::string script = std::string(std::getenv("HOME")) + "/script";
    std::ofstream(script) << "echo from a script\n";
    chmod(script.c_str(), 0755);
    EXPECT_EQ(resultOf(script), "from a script\n");
}

TEST(Shell, ToolsOfTheProgramComeFirstAndPatternsFindNothing) {
    const std::string tools = std::string(std::getenv("HOME")) + "/tools";
    std::filesystem::create_directory(tools);
    std::ofstream(tools + "/ls") << "#!/bin/sh\necho ours\n";
    chmod((tools + "/ls").c_str(), 0755);
    Shell::SetToolsFolder(String(tools));
    EXPECT_EQ(resultOf("ls"), "ours\n");
    EXPECT_EQ(resultOf("ls | cat"), "ours\n");
    Shell::SetToolsFolder("");
    EXPECT_EQ(resultOf("echo *image == *"), "*image == *\n");
}

TEST(Shell, AThreadWaitsWhileTheWindowLives) {
    std::string result;
    const auto thread = New<Thread>();
    thread->OnRun = [&] { result = resultOf("sleep 0.2; echo done"); };
    int ticks = 0;
    QTimer timer;
    timer.callOnTimeout([&] { ++ticks; });
    timer.start(10);
    thread->Run();
    EXPECT_TRUE(RunUntil([&] { return thread->State() == Thread::NotRunning; }));
    EXPECT_EQ(result, "done\n");
    EXPECT_GT(ticks, 3);
}

TEST(Shell, AKillEndsTheCommandAndItsChildren) {
    const std::string pids = std::string(std::getenv("HOME")) + "/pids";
    const auto thread = New<Thread>();
    thread->OnRun = [&] {
        resultOf("echo $$ >> " + pids + "; (sh -c 'echo $$ >> " + pids + "; sleep 100'); echo end");
    };
    thread->Run();
    const auto started = [&] {
        std::ifstream file(pids);
        std::string line;
        int lines = 0;
        while (std::getline(file, line)) ++lines;
        return lines == 2;
    };
    ASSERT_TRUE(RunUntil(started));
    thread->Kill();
    EXPECT_EQ(thread->State(), Thread::NotRunning);
    std::ifstream file(pids);
    for (pid_t process = 0; file >> process;) {
        // The grandchild is reaped by whoever adopts it; a process that waits for that is dead as well.
        const auto dead = [process] {
            std::ifstream status("/proc/" + std::to_string(process) + "/stat");
            std::string number;
            std::string name;
            std::string state;
            status >> number >> name >> state;
            return !status || state == "Z";
        };
        EXPECT_TRUE(RunUntil(dead)) << process;
    }
}

}  // namespace
}  // namespace framework
