// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <string>

#include "framework/core/desktop/Application.h"
#include "framework/core/threads/Thread.h"
#include "framework/core/threads/Waiting.h"
#include "framework/core/time/Clock.h"
#include "framework/ui/control/Canvas.h"
#include "framework/ui/control/Label.h"
#include "framework/ui/control/PushButton.h"
#include "framework/ui/field/TextField.h"
#include "framework/ui/menu/Toolbar.h"
#include "framework/ui/window/Global.h"
#include "framework/ui/window/WindowFrame.h"
#include "tests/support/EventLoop.h"

namespace framework::testing {
namespace {

using marrowbeck::test::RunUntil;

/// A window that writes down what happens to it.
class Diary : public Window {
  public:
    void Layout() override {
        Width(400);
        Height(300);
        Log += "layout ";
    }
    void CreateControls() override { Log += "controls "; }
    void Event_Open() override {
        Log += "open ";
        if (WhileOpening) WhileOpening();
    }
    void Event_Close() override { Log += Visible() ? "close " : "close-hidden "; }

    std::string Log;
    std::function<void()> WhileOpening;
};

class GlobalDiary : public Diary {
  public:
    void Event_Open() override {
        Diary::Event_Open();
        SameInside = Global<GlobalDiary>().Get() == this;
    }
    bool SameInside = false;
};

TEST(WindowLife, TheGlobalInstanceIsMadeOnceAndComesBackAfterItWasClosed) {
    const Ref<GlobalDiary> window = Global<GlobalDiary>();
    EXPECT_EQ(window->Log, "layout controls open ");
    EXPECT_TRUE(window->SameInside);
    EXPECT_FALSE(window->Visible());

    window->Show();
    EXPECT_TRUE(window->Visible());
    window->Native()->close();  // the close box
    window->Close();
    EXPECT_FALSE(window->Visible());
    EXPECT_EQ(window->Log, "layout controls open close ");

    Global<GlobalDiary>()->Show();
    EXPECT_TRUE(window->Visible());
    EXPECT_EQ(window->Log, "layout controls open close ");
}

TEST(WindowLife, ShowModalReturnsWhenTheWindowWasClosedAndNotIfItsOpenEventDidThat) {
    const Ref<Diary> window = New<Diary>();
    QTimer::singleShot(0, [&] {
        EXPECT_TRUE(window->Native()->isModal());
        window->Native()->close();
    });
    window->ShowModal();
    EXPECT_EQ(window->Log, "layout controls open close ");
    EXPECT_FALSE(window->Native()->isModal());

    const Ref<Diary> shy = New<Diary>();
    shy->WhileOpening = [&] { shy->Close(); };
    shy->ShowModal();
    EXPECT_EQ(shy->Log, "layout controls open close-hidden ");
}

/// One control for each way of following the edges.
class Locked : public Window {
  public:
    void Layout() override {
        Width(806);
        Height(492);
        MinWidth(640);
        MinHeight(400);
    }
    void CreateControls() override {
        All = Add<Label>("All", 0, 280, 806, 170, {true, true, true, true});
        Corner = Add<Label>("Corner", 673, 458, 113, 20, {false, false, true, true});
        Wide = Add<Label>("Wide", 229, 7, 349, 20, {true, true, true, false});
        Fixed = Add<Label>("Fixed", 164, 7, 250, 264);
        Tools = Add<Toolbar>("Tools", 0, 520, 600, 59);
        const Ref<ToolButton> button = New<ToolButton>();
        button->Caption("Go");
        Tools->Append(button);
    }
    Ref<Label> All, Corner, Wide, Fixed;
    Ref<Toolbar> Tools;
};

std::string placeOf(const RectControl& control) {
    return std::to_string(control.Left()) + "," + std::to_string(control.Top()) + " " +
           std::to_string(control.Width()) + "x" + std::to_string(control.Height());
}

TEST(WindowLayout, ControlsFollowTheEdgesTheyAreLockedToWithoutDrift) {
    const Ref<Locked> window = New<Locked>();
    window->Realize();
    window->Width(1000);  // before it is on show
    EXPECT_EQ(placeOf(*window->Corner), "867,458 113x20");

    window->Show();
    for (int pass = 0; pass < 20; ++pass) {
        window->Native()->resize(641 + 37 * pass, 531 + 13 * pass);
        window->Native()->resize(1301 - 7 * pass, 901 - 11 * pass);
    }
    window->Width(777);
    window->Height(555);
    EXPECT_EQ(placeOf(*window->All), "0,280 777x233");
    EXPECT_EQ(placeOf(*window->Corner), "644,521 113x20");
    EXPECT_EQ(placeOf(*window->Wide), "229,7 320x20");
    EXPECT_EQ(placeOf(*window->Fixed), "164,7 250x264");

    // A place that the program gives holds for the size that the window has then.
    window->Corner->Left(600);
    window->Width(787);
    EXPECT_EQ(placeOf(*window->Corner), "610,521 113x20");

    window->Corner->LeastLeft(560, 80);
    window->Width(720);
    EXPECT_EQ(placeOf(*window->Corner), "560,521 96x20") << "it keeps its distance from the edge";
    window->Width(640);
    EXPECT_EQ(placeOf(*window->Corner), "560,521 80x20") << "and then its least width";
}

TEST(WindowLayout, BarsStandOutsideAContentOfExactlyTheGivenSize) {
    const Ref<Locked> window = New<Locked>();
    window->Show();
    const QWidget& frame = *window->Native();
    EXPECT_EQ(window->Width(), 806);
    EXPECT_EQ(window->Height(), 492);
    EXPECT_EQ(frame.height(), 492 + window->Tools->Height());
    EXPECT_GT(window->Tools->Height(), 20);

    window->Native()->resize(10, 10);
    EXPECT_EQ(window->Width(), 640);
    EXPECT_EQ(window->Height(), 400);
    window->Width(5);
    EXPECT_EQ(window->Width(), 640);

    window->Resizeable(false);
    window->Native()->resize(900, 900);
    EXPECT_EQ(window->Height(), 400);
    window->Height(450);
    EXPECT_EQ(window->Height(), 450);
}

TEST(WindowLayout, TheTabKeyVisitsControlsByTheirIndexFromTheFirstThatTakesKeys) {
    const Ref<Window> window = New<Window>();
    window->Add<PushButton>("button", 0, 0, 50, 20)->TabIndex(9);
    window->Add<Label>("label", 0, 0, 50, 20);
    const auto add = [&](const char* name, int tabIndex) {
        const Ref<TextField> field = window->Add<TextField>(name, 0, 0, 50, 20);
        field->TabIndex(tabIndex);
        return field;
    };
    const Ref<TextField> third = add("third", 3);
    const Ref<TextField> first = add("first", 1);
    const Ref<TextField> second = add("second", 2);
    window->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
    EXPECT_EQ(window->Native()->focusWidget(), first->Native());
    QTest::keyClick(window->Native()->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->Native()->focusWidget(), second->Native());
    QTest::keyClick(window->Native()->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->Native()->focusWidget(), third->Native());
}

TEST(WindowLook, TheLastOfManyChangesIsPaintedThoughNotEachOne) {
    const Ref<Window> window = New<Window>();
    const Ref<Canvas> canvas = window->Add<Canvas>("canvas", 0, 0, 50, 20);
    int value = 0;
    int painted = -1;
    canvas->OnPaint = [&](Graphics&) { painted = value; };
    window->Show();
    for (value = 0; value < 50; ++value) {
        canvas->Refresh(true);
        QCoreApplication::processEvents();
    }
    canvas->Refresh(true);
    EXPECT_TRUE(RunUntil([&] { return painted == value; }));
}

TEST(WindowLook, NoThreadRunsInTheMiddleOfPainting) {
    const Ref<Window> window = New<Window>();
    const Ref<Canvas> canvas = window->Add<Canvas>("canvas", 0, 0, 50, 20);
    bool ran = false;
    const Ref<Thread> thread = New<Thread>();
    thread->OnRun = [&ran] { ran = true; };
    canvas->OnPaint = [&thread](Graphics&) {
        thread->Run();
        for (const double begin = Microseconds(); Microseconds() < begin + 20'000;) LoopYield();
    };
    canvas->Native()->grab();
    EXPECT_FALSE(ran);
    EXPECT_TRUE(RunUntil([&ran] { return ran; }));
}

}  // namespace
}  // namespace framework::testing
