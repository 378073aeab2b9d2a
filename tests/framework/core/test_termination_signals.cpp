// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include "framework/core/desktop/TerminationSignals.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ForkedProcess.h"

namespace framework::testing {
namespace {

using marrowbeck::test::RunUntil;

TEST(TerminationSignals, ReachTheEventLoopOnceEach) {
    int count = 0;
    const TerminationSignals endOfSession([&count] { ++count; });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const int before = count;
        raise(signal);
        EXPECT_EQ(count, before);
        EXPECT_TRUE(RunUntil([&] { return count == before + 1; })) << signal;
    }
}

TEST(TerminationSignals, ASecondOneEndsTheProcess) {
    const pid_t child = marrowbeck::test::Fork([] {
        const TerminationSignals endOfSession([] {});
        raise(SIGTERM);
        raise(SIGTERM);
        return true;
    });
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
}

}  // namespace
}  // namespace framework::testing
