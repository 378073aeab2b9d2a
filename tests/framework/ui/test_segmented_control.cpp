// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QTest>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/control/SegmentedControl.h"
#include "framework/ui/control/TextField.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

class Segments : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* title : {"JPG", "TIFF", "PNG", "ALL"}) control->Append(New<SegmentedControlItem>(title, 30));
        control->SizeToFit();
        control->OnAction = [this](SegmentedControl&, int index) { actions += std::to_string(index) + " "; };
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
    }
    QAbstractButton* Segment(int index) {
        return control->Native()->findChild<QAbstractButton*>(QStringLiteral("Segment%1").arg(index));
    }
    void Click(int index) { QTest::mouseClick(Segment(index), Qt::LeftButton); }
    std::string Selection() {
        std::string selected;
        for (int i = 0; i < control->Count(); ++i) {
            EXPECT_EQ(control->Items(i)->Selected(), Segment(i)->isChecked());
            selected += control->Items(i)->Selected() ? '1' : '0';
        }
        return selected;
    }

    Ref<Window> window = New<Window>();
    Ref<SegmentedControl> control = window->Add<SegmentedControl>("segments", 5, 39, 152, 24);
    Ref<TextField> after = window->Add<TextField>("after", 5, 80, 50, 20);
    std::string actions;
};

TEST_F(Segments, OneAtATimeIsSelectedByHandAndByCode) {
    EXPECT_EQ(Selection(), "0000");
    control->Items(0)->Selected(true);
    control->Items(3)->Selected(true);
    EXPECT_EQ(Selection(), "0001");
    control->Items(3)->Selected(false);
    EXPECT_EQ(Selection(), "0000");
    EXPECT_EQ(actions, "");

    Click(2);
    Click(1);
    Click(1);
    EXPECT_EQ(Selection(), "0100");
    EXPECT_EQ(actions, "2 1 1 ");
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(Segment(1));
    EXPECT_EQ(told->role(), QAccessible::RadioButton);
    EXPECT_TRUE(told->state().checked);

    control->Enabled(false);
    Click(3);
    EXPECT_EQ(Selection(), "0100");
    EXPECT_EQ(actions, "2 1 1 ");
    EXPECT_THROW(control->Items(4), OutOfBoundsException);
}

TEST_F(Segments, OtherKindsOfSelection) {
    control->SelectionType(SegmentedControl::SelectionMultiple);
    Click(0);
    Click(3);
    control->Items(1)->Selected(true);
    EXPECT_EQ(Selection(), "1101");
    Click(0);
    EXPECT_EQ(Selection(), "0101");
    control->SelectionType(SegmentedControl::SelectionNone);
    Click(2);
    EXPECT_EQ(Selection(), "0101");
    EXPECT_EQ(actions, "0 3 0 2 ");
}

TEST_F(Segments, AreReachedByKeys) {
    after->Native()->setFocus();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window->Native()->focusWidget(), key, modifiers);
    };
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Segment(0)->hasFocus());
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    EXPECT_EQ(actions, "") << "arrows press nothing";
    press(Qt::Key_Space);
    EXPECT_EQ(actions, "1 ");
    EXPECT_EQ(Selection(), "0100");
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_TRUE(Segment(3)->hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(after->Native()->hasFocus()) << "one stop for the whole row";
}

TEST_F(Segments, FitTheirTitlesAndShareOutAnyOtherWidth) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_GE(Segment(i)->width(), 30);
        EXPECT_GE(Segment(i)->width(), Segment(i)->fontMetrics().horizontalAdvance(Segment(i)->text()));
    }
    control->Width(333);
    QTest::qWait(1);
    int right = 0;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Segment(i)->x(), right);
        right += Segment(i)->width();
    }
    EXPECT_EQ(right, 333);
}

TEST_F(Segments, AreAGroupOfButtonsToAScreenReader) {
    control->AccessibleName("File types");
    control->Items(2)->Selected(true);
    QAccessibleInterface* const group = QAccessible::queryAccessibleInterface(control->Native());
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name).toStdString(), "File types");
    ASSERT_EQ(group->childCount(), 4);
    EXPECT_EQ(group->child(2)->text(QAccessible::Name).toStdString(), "PNG");
    EXPECT_TRUE(group->child(2)->state().checkable);
    EXPECT_TRUE(group->child(2)->state().checked);
}

}  // namespace
}  // namespace framework::testing
