// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <array>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/process/Shell.h"
#include "framework/core/threads/StackCheck.h"
#include "framework/core/threads/Thread.h"
#include "framework/core/threads/Waiting.h"
#include "tests/support/EventLoop.h"

namespace framework {
namespace {

using marrowbeck::test::RunFor;
using marrowbeck::test::RunUntil;

/// An application that keeps what reaches it and answers as it is told.
class WatchingApplication : public Application {
  public:
    bool Event_UnhandledException(RuntimeException& error) override {
        seen.push_back(error.ClassName().ToStd());
        return keepAlive;
    }
    void Event_Close() override { ++closed; }

    std::vector<std::string> seen;
    bool keepAlive = true;
    int closed = 0;
};

Ref<Thread> threadThat(std::function<void()> work) {
    auto thread = New<Thread>();
    thread->OnRun = std::move(work);
    return thread;
}

bool ended(const Ref<Thread>& thread) {
    return thread->State() == Thread::NotRunning;
}

/// Sets a flag when it goes, as every destructor on a killed thread's way must.
struct Witness {
    bool& gone;
    ~Witness() { gone = true; }
};

TEST(Thread, SharesTimeWithTheEventLoopAndOtherThreadsAtYieldsOnly) {
    bool stop = false;
    bool torn = false;
    long first = 0;
    long second = 0;
    const auto counting = [&](long& mine) {
        return [&stop, &torn, &mine] {
            while (!stop) {
                const long before = mine;
                for (int i = 0; i < 1000; ++i) static_cast<void>(QElapsedTimer::isMonotonic());
                torn = torn || mine != before;
                ++mine;
                LoopYield();
            }
        };
    };
    const auto a = threadThat(counting(first));
    const auto b = threadThat(counting(second));
    a->Run();
    b->Run();
    int ticks = 0;
    QTimer timer;
    timer.callOnTimeout([&] { ++ticks; });
    timer.start(1);
    EXPECT_TRUE(RunUntil([&] { return first > 100 && second > 100 && ticks > 5; }));
    stop = true;
    ASSERT_TRUE(RunUntil([&] { return ended(a) && ended(b); }));
    EXPECT_FALSE(torn);
}

TEST(Thread, KillEndsItAtItsYieldWithDestructorsRunAndItCanRunAgain) {
    bool gone = false;
    int starts = 0;
    bool ranOn = false;
    const auto thread = threadThat([&] {
        ++starts;
        if (starts == 2) return;
        const Witness witness{gone};
        while (true) LoopYield();
        ranOn = true;
    });
    thread->Run();
    thread->Run();
    RunFor(30);
    EXPECT_EQ(starts, 1);
    thread->Kill();
    EXPECT_TRUE(ended(thread));
    EXPECT_TRUE(gone);
    EXPECT_FALSE(ranOn);
    thread->Run();
    EXPECT_TRUE(RunUntil([&] { return ended(thread); }));
    EXPECT_EQ(starts, 2);
}

TEST(Thread, AKillLetsBegunWorkBecomeWholeButWaitsForNoHangingCommand) {
    int whole = 0;
    const auto rows = threadThat([&] {
        while (true) {
            {
                const Thread::FinishFirst row;
                Shell shell;
                shell.Execute("sleep 0.02");
                whole += shell.ErrorCode() == 0 ? 1 : 1000;
            }
            LoopYield();
        }
    });
    rows->Run();
    RunUntil([&] { return rows->State() == Thread::Waiting; });
    const int before = whole;
    rows->Kill();
    EXPECT_EQ(whole, before + 1);

    int undone = 0;
    const auto hanging = threadThat([&] {
        {
            const Thread::FinishFirst finished([&] { undone += 100; });
        }
        const Thread::FinishFirst row([&] { ++undone; });
        Shell shell;
        shell.Execute("sleep 100");
    });
    hanging->Run();
    RunUntil([&] { return hanging->State() == Thread::Waiting; });
    QElapsedTimer clock;
    clock.start();
    hanging->Kill();
    EXPECT_TRUE(ended(hanging));
    EXPECT_EQ(undone, 1);
    EXPECT_LT(clock.elapsed(), 90'000);
}

TEST(Thread, ExceptionsInFlightOnOneStackDoNotReachAnother) {
    int caught = 0;
    const auto thrower = [&] {
        for (int i = 0; i < 20; ++i) {
            try {
                throw std::runtime_error("mine");
            } catch (const std::runtime_error& error) {
                caught += std::string(error.what()) == "mine" ? 1 : 0;
            }
            Application::Current()->DoEvents(-1);
        }
    };
    const auto application = New<WatchingApplication>();
    const auto a = threadThat(thrower);
    const auto b = threadThat(thrower);
    a->Run();
    b->Run();
    // The main stack is inside a catch block of its own while the threads throw.
    try {
        throw std::logic_error("main");
    } catch (const std::logic_error& error) {
        EXPECT_TRUE(RunUntil([&] { return ended(a) && ended(b); }));
        EXPECT_STREQ(error.what(), "main");
    }
    EXPECT_EQ(caught, 40);
}

TEST(Thread, WhatNothingCatchesReachesTheApplicationAndEndsTheThreadAlone) {
    const auto application = New<WatchingApplication>();
    bool gone = false;
    const auto thread = threadThat([&] {
        const Witness witness{gone};
        const Ref<Thread> nothing;
        nothing->Run();
    });
    thread->Run();
    EXPECT_TRUE(RunUntil([&] { return ended(thread); }));
    EXPECT_TRUE(gone);
    Event<int()> answer;
    answer = []() -> int { throw OutOfBoundsException(); };
    EXPECT_EQ(answer.Raise(), 0);
    answer = []() -> int { throw std::bad_alloc(); };
    answer.Raise();
    EXPECT_EQ(application->seen,
              (std::vector<std::string>{"NilObjectException", "OutOfBoundsException", "RuntimeException"}));
    EXPECT_EQ(application->closed, 0);
}

TEST(Thread, AnExceptionThatTheApplicationRefusesIsToldAndQuitsInOrder) {
    const auto application = New<WatchingApplication>();
    application->keepAlive = false;
    std::string told;
    internal::SetAlertPresenter([&](const String& text) { told = text.ToStd(); });
    Dispatch([] { throw KeyNotFoundException("There is no such key."); });
    internal::SetAlertPresenter([](const String&) {});
    EXPECT_NE(told.find("KeyNotFoundException: There is no such key."), std::string::npos);
    EXPECT_EQ(application->closed, 1);
    Quit();
    EXPECT_EQ(application->closed, 1) << "only the first quit counts";
    // A new loop, so that the tests after this one find the toolkit as it was.
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

TEST(Thread, AnEndThatFailsIsToldByTheStatus) {
    class FailingApplication : public Application {
      public:
        void Event_Close() override { throw RuntimeException("Nothing was saved."); }
    };
    const auto application = New<FailingApplication>();
    QTimer::singleShot(0, [] { Quit(); });
    EXPECT_EQ(QCoreApplication::exec(), 1);
}

// Recurses deeper than any stack; the room that is used after the call keeps the compiler from making a loop of it.
int recurse(int depth) {
    CheckStack();
    std::array<volatile char, 512> room;
    room[0] = static_cast<char>(depth);
    return depth == std::numeric_limits<int>::max() ? 0 : recurse(depth + 1) + room[0];
}

TEST(Thread, EndlessRecursionEndsInAnExceptionOnEitherStack) {
    const auto application = New<WatchingApplication>();
    Dispatch([] { recurse(0); });
    const auto thread = threadThat([] { recurse(0); });
    thread->Run();
    EXPECT_TRUE(RunUntil([&] { return ended(thread); }));
    EXPECT_EQ(application->seen, (std::vector<std::string>{"StackOverflowException", "StackOverflowException"}));
}

}  // namespace
}  // namespace framework
