// SPDX-License-Identifier: GPL-2.0-or-later
#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

#include "framework/ui/control/ContextualClick.h"
#include "framework/ui/menu/MenuItem.h"
#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

/// With a handler that brings the selected row to the top, as a program may.
class ListboxInputTest : public ListboxTest {
  protected:
    void ScrollAtChange() {
        list->OnChange = [this] {
            ++changes;
            list->ScrollPosition(list->ListIndex());
        };
    }

    /// Answers the contextual menu when it opens with its entry at `place`.
    void ChooseFromMenu(int place) {
        QTimer::singleShot(0, &fixture, [this, place] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu) return ChooseFromMenu(place);
            menu->setActiveAction(menu->actions().at(place));
            QTest::keyClick(menu, Qt::Key_Return);
        });
    }

    void RightClick(int row) {
        const QPoint place = PlaceOf(row);
        QTest::mousePress(View().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place, View().viewport()->mapToGlobal(place));
        QApplication::sendEvent(View().viewport(), &asked);
        QTest::mouseRelease(View().viewport(), Qt::RightButton, {}, place);
    }

    void OfferMenu() {
        list->OnConstructContextualMenu = [this](Ref<MenuItem> base, int, int y) {
            menuPlace = y;
            constructedInContext = IsContextualClick();
            base->Append(New<MenuItem>("Highlight file"));
            base->Append(New<MenuItem>("Open image"));
            return true;
        };
        list->OnContextualMenuAction = [this](Ref<MenuItem> item) {
            chosen += item->Text().ToStd() + ";";
            return false;
        };
    }

    /// Takes what is waiting for a menu along when the test ends.
    QObject fixture;
    int menuPlace = -1;
    bool constructedInContext = false;
    std::string chosen;
};

TEST_F(ListboxInputTest, ClicksSelectAndRaiseOneChangeEach) {
    Add({"a", "b", "c", "d", "e"});
    Click(1);
    EXPECT_EQ(Selection(), "b");
    Click(1);
    EXPECT_EQ(changes, 1);
    Click(3, Qt::ControlModifier);
    EXPECT_EQ(Selection(), "b d");
    Click(4, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), "b d e");
    EXPECT_EQ(changes, 3);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, PlaceOf(4) + QPoint(0, 2 * View().rowHeight(4)));
    EXPECT_EQ(Selection(), "");
    EXPECT_EQ(changes, 4);
}

TEST_F(ListboxInputTest, AListThatScrollsAtAClickStaysUnderThePointerUntilTheRelease) {
    ScrollAtChange();
    Add(100);
    const QPoint place = PlaceOf(4);
    QTest::mousePress(View().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(list->ScrollPosition(), 4);
    QTest::mouseMove(View().viewport(), place + QPoint(2, 1));
    QMouseEvent jitter(QEvent::MouseMove, place + QPoint(2, 1), View().viewport()->mapToGlobal(place), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(View().viewport(), &jitter);
    EXPECT_EQ(Selection(), "row 4");
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(View().rowAt(1), 4);

    int doubleClicked = -1;
    list->OnDoubleClick = [&] { doubleClicked = list->ListIndex(); };
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(doubleClicked, 8) << "the row first clicked, though the second click falls on another";
    EXPECT_EQ(Selection(), "row 8");
}

TEST_F(ListboxInputTest, AContextualClickSelectsWhatIsNotSelected) {
    Add({"a", "b", "c"});
    OfferMenu();
    bool contextual = false;
    list->OnChange = [&] {
        ++changes;
        contextual = IsContextualClick();
    };
    Click(0);
    EXPECT_FALSE(contextual);
    ChooseFromMenu(1);
    RightClick(2);
    Settle();
    EXPECT_TRUE(contextual);
    EXPECT_EQ(Selection(), "c");
    EXPECT_EQ(chosen, "Open image;");
    EXPECT_TRUE(constructedInContext);
    EXPECT_FALSE(IsContextualClick());

    Click(0, Qt::ControlModifier);
    changes = 0;
    ChooseFromMenu(0);
    RightClick(2);
    Settle();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Selection(), "a c");
}

TEST_F(ListboxInputTest, KeysOpenTheContextualMenuAtTheRow) {
    Add({"a", "b", "c"});
    OfferMenu();
    Click(1);
    ChooseFromMenu(0);
    Press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(chosen, "Highlight file;");
    EXPECT_NEAR(menuPlace, View().viewport()->mapTo(&View(), View().visualRect(View().currentIndex()).bottomLeft()).y(),
                1);
    ChooseFromMenu(1);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1), View().mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&View(), &menuKey);
    EXPECT_EQ(chosen, "Highlight file;Open image;");
}

TEST_F(ListboxInputTest, KeysMoveAndExtendTheSelection) {
    Add(100);
    Settle();
    Press(Qt::Key_Down);
    EXPECT_EQ(Selection(), "row 0");
    Press(Qt::Key_Down);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), "row 1 row 2");
    Press(Qt::Key_End);
    EXPECT_EQ(Selection(), "row 99") << "the last row, not the last cell of this one";
    Press(Qt::Key_PageUp);
    EXPECT_LT(list->ListIndex(), 99);
    EXPECT_GT(list->ListIndex(), 80);
    Press(Qt::Key_Home);
    EXPECT_EQ(Selection(), "row 0");
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list->SelCount(), 100);
}

TEST_F(ListboxInputTest, TypingFindsTheNameThatBeginsSo) {
    Add({"Alder", "beech", "Birch", "\xC3\x89toile", "birdcherry"});
    QTest::keyClicks(&View(), "BIR");
    EXPECT_EQ(Selection(), "Birch");
    QTest::keyClicks(&View(), "d");
    EXPECT_EQ(Selection(), "birdcherry");
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), "\xC3\x89toile birdcherry") << "the keys go on from the row that was found";
    Press(Qt::Key_Down, Qt::ShiftModifier);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    QTest::keyClicks(&View(), "b");
    EXPECT_EQ(Selection(), "beech") << "goes on behind the selected row, and from the top again";
    QTest::keyClicks(&View(), "b");
    EXPECT_EQ(Selection(), "Birch") << "the same letter again goes to the next";
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    QTest::keyClicks(&View(), "zzz");
    EXPECT_EQ(Selection(), "Birch");
}

TEST_F(ListboxInputTest, HeadingsAreReachedAndPressedByKeysAndByAScreenReader) {
    list->Heading(1, "Second");
    list->Native()->activateWindow();
    std::vector<int> pressed;
    list->OnSortColumn = [&](int column) {
        pressed.push_back(column);
        return true;
    };
    Settle();
    View().setFocus();
    QTest::keyClick(&View(), Qt::Key_Backtab);
    QWidget* const header = View().horizontalHeader();
    ASSERT_TRUE(header->hasFocus());
    QTest::keyClick(header, Qt::Key_Right);
    QTest::keyClick(header, Qt::Key_Space);
    QTest::keyClick(header, Qt::Key_Home);
    QTest::keyClick(header, Qt::Key_Left);
    QTest::keyClick(header, Qt::Key_Return);
    QTest::keyClick(header, Qt::Key_Down);
    EXPECT_TRUE(View().hasFocus());
    EXPECT_EQ(pressed, (std::vector<int>{1, 0}));

    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(&View());
    QAccessibleInterface* heading = nullptr;
    for (int i = 0; i < table->childCount() && !heading; ++i) {
        QAccessibleInterface* const child = table->child(i);
        if (child->text(QAccessible::Name) == "Second") heading = child;
    }
    ASSERT_TRUE(heading);
    EXPECT_EQ(table->child(table->indexOfChild(heading)), heading);
    heading->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed.back(), 1);
    EXPECT_EQ(heading->text(QAccessible::Description), "Sorted, ascending");
    heading->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(heading->state().focused);
    EXPECT_EQ(table->focusChild(), heading);
    EXPECT_EQ(table->tableInterface()->columnCount(), 3);
}

}  // namespace
}  // namespace framework::testing
