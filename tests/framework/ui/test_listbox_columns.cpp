// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

class ListboxColumnsTest : public ListboxTest {
  protected:
    std::string Widths() { return list->ColumnWidths().ToStd(); }
    int Room() { return View().viewport()->width(); }
    int Used() { return View().horizontalHeader()->length(); }

    void DragEdge(int column, int by) {
        const QHeaderView& header = *View().horizontalHeader();
        const int edge = header.sectionViewportPosition(column) + header.sectionSize(column) - 1;
        const QPoint from(edge, header.height() / 2);
        QTest::mousePress(header.viewport(), Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(by, 0), header.viewport()->mapToGlobal(from + QPoint(by, 0)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(header.viewport(), &move);
        QTest::mouseRelease(header.viewport(), Qt::LeftButton, {}, from + QPoint(by, 0));
    }
};

TEST_F(ListboxColumnsTest, SharesAndNonsenseAreTolerated) {
    list->ColumnWidths("25%,*,3*");
    EXPECT_EQ(View().columnWidth(0), Room() / 4);
    EXPECT_NEAR(View().columnWidth(2), 3 * View().columnWidth(1), 3);
    EXPECT_EQ(Used(), Room());

    list->ColumnWidths("");
    const int defaultWidth = View().columnWidth(0);
    for (const char* nonsense : {",,", "x,y", "-5,nan,inf", "12px", "1,2,3,4,5,,,", "99999999999999999999,0"}) {
        list->ColumnWidths(nonsense);
        for (int column = 0; column < 3; ++column) {
            EXPECT_GE(View().columnWidth(column), 20) << nonsense;
            EXPECT_LE(View().columnWidth(column), 5000) << nonsense;
        }
    }
    list->ColumnWidths("x");
    EXPECT_EQ(View().columnWidth(0), defaultWidth);
}

TEST_F(ListboxColumnsTest, DraggingAnEdgeMovesThatEdgeAlone) {
    list->ColumnWidths("100,100,50");
    const int first = View().columnWidth(0);
    const int second = View().columnWidth(1);
    DragEdge(1, 20);
    EXPECT_EQ(View().columnWidth(1), second + 20);
    EXPECT_EQ(View().columnWidth(0), first);
    EXPECT_EQ(Used(), Room());
    EXPECT_EQ(Widths(), std::to_string(first) + "," + std::to_string(second + 20) + ",");

    list->ColumnsResizable(false);
    DragEdge(1, 20);
    EXPECT_EQ(View().columnWidth(1), second + 20);
}

TEST_F(ListboxColumnsTest, UsualTextsAreShownBeforeHeadingsUntilAPersonSetsAWidth) {
    list->Heading(1, "A heading that is far too long for any list");
    list->ColumnUsualText(1, "3000 x 2000");
    const int text = View().fontMetrics().horizontalAdvance(QStringLiteral("3000 x 2000"));
    for (const int width : {300, 800}) {
        list->Width(width);
        Settle();
        EXPECT_GT(View().columnWidth(1), text);
        EXPECT_EQ(Used(), Room());
    }
    EXPECT_EQ(Widths(), ",,");
    list->ColumnWidths("100,30,");
    EXPECT_EQ(View().columnWidth(1), 30);
}

TEST_F(ListboxColumnsTest, ColumnsBeyondTheEdgeAreReachedByKeyWithoutAScrollBar) {
    list->ColumnWidths("300,300,300");
    Add({"a"});
    Click(0);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_LE(View().columnViewportPosition(2), Room() - 300);
    EXPECT_EQ(Selection(), "a");
    const int first = View().columnViewportPosition(0);
    Press(Qt::Key_Home);
    Press(Qt::Key_End);
    EXPECT_EQ(View().columnViewportPosition(0), first);
}

}  // namespace
}  // namespace framework::testing
