// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <array>
#include <exception>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/files/FolderItem.h"
#include "framework/core/process/Shell.h"
#include "framework/core/threads/StackCheck.h"
#include "framework/core/threads/Thread.h"
#include "framework/core/threads/Waiting.h"
#include "framework/core/time/Clock.h"
#include "framework/core/time/Timer.h"
#include "tests/support/EventLoop.h"
#include "tests/support/TemporaryFolder.h"

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

/// Uses up the share of time of what is running, so that its next yield lets others run.
void spendSlice() {
    const double end = Microseconds() + 20'000;
    while (Microseconds() < end) continue;
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

TEST(Thread, GoesOnWhileTheMainStackYieldsOrWaitsWithoutAnEventLoop) {
    const TemporaryFolder folder;
    const String line(folder.Path("line"));
    ASSERT_EQ(mkfifo(line.CString(), 0600), 0);
    const auto thread = threadThat([&] {
        Shell shell;
        shell.Execute("true");
        Pause(1);
        RunOnMainStack([] {});
        // The main stack's command ends by this alone.
        std::ofstream(folder.Path("line")) << "there";
        shell.Execute("true");
    });
    thread->Run();
    Shell shell;
    shell.Execute("timeout 60 cat " + line);
    EXPECT_EQ(shell.Result().Bytes(), "there");
    const double limit = Microseconds() + 60e6;
    while (!ended(thread) && Microseconds() < limit) LoopYield();
    EXPECT_TRUE(ended(thread));
}

TEST(Thread, DestructorsOnTheWayOutOfItMayYieldAndWait) {
    struct Talkative {
        int& steps;
        ~Talkative() {
            spendSlice();
            LoopYield();
            Application::Current()->DoEvents(-1);
            Shell shell;
            shell.Execute("sleep 0.02");
            steps += shell.ErrorCode() == 0 ? 1 : 0;
            Pause(1);
            RunOnMainStack([this] { ++steps; });
            Completion never;
            never.Wait();
            ++steps;
        }
    };
    const auto application = New<WatchingApplication>();
    int steps = 0;
    bool begun = false;
    const auto killed = threadThat([&] {
        const Talkative witness{steps};
        begun = true;
        while (true) LoopYield();
    });
    killed->Run();
    ASSERT_TRUE(RunUntil([&] { return begun; }));
    killed->Kill();
    EXPECT_TRUE(ended(killed));
    EXPECT_EQ(steps, 3);
    const auto failing = threadThat([&] {
        const Talkative witness{steps};
        throw OutOfBoundsException();
    });
    failing->Run();
    EXPECT_TRUE(RunUntil([&] { return ended(failing); }));
    EXPECT_EQ(steps, 6);
    EXPECT_EQ(application->seen, std::vector<std::string>{"OutOfBoundsException"});
}

TEST(Thread, AnObjectOutlivesTheCallsThatOthersTakeItFrom) {
    const TemporaryFolder folder;
    for (int i = 0; i < 100; ++i) folder.Put("file" + std::to_string(i));
    Ref<FolderItem> shown = folder.Item();
    bool begun = false;
    int count = 0;
    const auto thread = threadThat([&] {
        begun = true;
        spendSlice();
        count = shown->Count();
    });
    thread->Run();
    EXPECT_TRUE(RunUntil([&] {
        if (begun) shown = Nil;
        return ended(thread);
    }));
    EXPECT_EQ(count, 100);
}

TEST(Thread, AHandlerMayBindItsOwnEventAnewOrDropItsOwner) {
    const std::string longText(1000, 'x');
    std::string seen;
    auto event = std::make_unique<Event<void()>>();
    *event = [&, longText] {
        *event = nullptr;
        event.reset();
        seen = longText;
    };
    event->Raise();
    EXPECT_EQ(seen, longText);

    const auto application = New<WatchingApplication>();
    application->_AddMenuHandler("Reload", [&, longText] {
        application->_AddMenuHandler("Reload", [] { return false; });
        return longText.size() == 1000;
    });
    EXPECT_TRUE(application->RunMenuHandler("Reload"));
    EXPECT_FALSE(application->RunMenuHandler("Reload"));
}

TEST(Timer, NeverFiresBeforeItsPeriod) {
    std::vector<Ref<Timer>> timers;
    std::vector<double> early;
    int fired = 0;
    for (int period = 60; period < 140; period += 4) {
        timers.push_back(New<Timer>());
        const double begin = Microseconds();
        timers.back()->OnAction = [&, period, begin](Timer&) {
            ++fired;
            if (Microseconds() - begin < period * 1000.0) early.push_back(period);
        };
        timers.back()->Period(period);
        timers.back()->Mode(Timer::ModeSingle);
    }
    EXPECT_TRUE(RunUntil([&] { return fired == static_cast<int>(timers.size()); }));
    EXPECT_EQ(early, std::vector<double>());
}

TEST(Thread, ExceptionsInFlightOnOneStackDoNotReachAnother) {
    int caught = 0;
    const auto thrower = [&] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(std::current_exception(), nullptr);
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
        EXPECT_THROW(throw, std::logic_error);
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
