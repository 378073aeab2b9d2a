// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileSystemWatcher>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/Descriptor.h"
#include "framework/core/process/CommandLine.h"
#include "framework/core/process/Shell.h"
#include "framework/core/threads/Thread.h"
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
    EXPECT_EQ(internal::PlainWords("find /a\\*b == *image"), (Words{"find", "/a*b", "==", "*image"}));
    for (const char* line :
         {"",    "a | b", "a; b", "a $b",    "a `b`", "a > b", "*image", "a /*b", "a *'/'b", "a *\\/b", "a ?b",
          "~/a", "A=1 b", "cd /", "a \"b\"", "a 'b",  "a\\",   "a & ",   "a # b", "a\nb",    "if x"}) {
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

TEST(Shell, AKillEndsTheCommandAndItsChildren) {
    // Each process puts an empty file there that is called by its number.
    const std::filesystem::path processes = std::string(std::getenv("HOME")) + "/processes";
    std::filesystem::create_directory(processes);
    const std::string note = ": > " + processes.string() + "/$$; ";
    const auto thread = New<Thread>();
    thread->OnRun = [&] { resultOf(note + "(sh -c '" + note + "sleep 100'); echo end"); };
    thread->Run();
    const auto started = [&] {
        using Files = std::filesystem::directory_iterator;
        return std::distance(Files(processes), Files()) == 2;
    };
    const QFileSystemWatcher wake({QString::fromStdString(processes.string())});
    ASSERT_TRUE(RunUntil(started));
    thread->Kill();
    EXPECT_EQ(thread->State(), Thread::NotRunning);
    constexpr int kGiveUp = 60'000;
    for (const auto& file : std::filesystem::directory_iterator(processes)) {
        // None at all where whoever adopted the process has reaped it already.
        const base::Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, std::stoi(file.path().filename()), 0)));
        pollfd death{process.Number(), POLLIN, 0};
        EXPECT_TRUE(process.Number() < 0 || poll(&death, 1, kGiveUp) == 1) << file.path();
    }
    // What was killed is not waited for, but does not stay on the system's list either.
    const auto hasNoChildren = [] {
        siginfo_t child;
        statusOf("true");
        return waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) != 0;
    };
    EXPECT_TRUE(RunUntil(hasNoChildren));
}

TEST(Shell, ACommandThatIsKilledIsOverThoughAChildOfItStillHasItsOutput) {
    const std::string note = std::string(std::getenv("HOME")) + "/child";
    Shell shell;
    shell.Execute(String("mkfifo " + note + "; setsid sh -c 'echo $$ > " + note + "; exec sleep 1000' & cat " + note +
                         "; kill -KILL $$"));
    EXPECT_EQ(shell.ErrorCode(), 128 + SIGKILL);
    const int child = std::atoi(shell.Result().CString());
    ASSERT_GT(child, 0);
    EXPECT_EQ(kill(child, SIGKILL), 0);
}

}  // namespace
}  // namespace framework
