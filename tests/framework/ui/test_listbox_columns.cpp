// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

class ListboxColumnsTest : public ListboxTest {
  protected:
    std::string Widths() { return list->ColumnWidths().ToStd(); }
    int Room() { return View().viewport()->width(); }
    int Used() { return View().horizontalHeader()->length(); }
    std::vector<int> Shown() {
        std::vector<int> widths;
        for (int column = 0; column < list->ColumnCount(); ++column) widths.push_back(View().columnWidth(column));
        return widths;
    }
    int WidthOf(const char* text) { return View().fontMetrics().horizontalAdvance(QString::fromUtf8(text)); }
    void ExpectAllInSight(const char* after) {
        EXPECT_EQ(Used(), Room()) << after;
        for (const int width : Shown()) EXPECT_GE(width, 24) << after;
    }

    QPoint Edge(int column) {
        const QHeaderView& header = *View().horizontalHeader();
        return {header.sectionViewportPosition(column) + header.sectionSize(column) - 1, header.height() / 2};
    }
    /// By one distance after the other, each from where the edge was at first.
    void DragEdge(int column, const std::vector<int>& distances) {
        QWidget* const headings = View().horizontalHeader()->viewport();
        const QPoint from = Edge(column);
        QTest::mousePress(headings, Qt::LeftButton, {}, from);
        for (const int by : distances) {
            const QPoint to = from + QPoint(by, 0);
            QMouseEvent move(QEvent::MouseMove, to, headings->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(headings, &move);
        }
        QTest::mouseRelease(headings, Qt::LeftButton, {}, from + QPoint(distances.back(), 0));
    }
    void DoubleClickEdge(int column) {
        const QPoint edge = Edge(column);
        QTest::mouseClick(View().horizontalHeader()->viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseDClick(View().horizontalHeader()->viewport(), Qt::LeftButton, {}, edge);
    }
};

TEST_F(ListboxColumnsTest, SharesAndNonsenseAreTolerated) {
    list->ScrollBarVertical(false);
    list->ColumnWidths("25%,*,3*");
    EXPECT_EQ(View().columnWidth(0), Room() / 4);
    EXPECT_NEAR(View().columnWidth(2), 3 * View().columnWidth(1), 3);
    EXPECT_EQ(Used(), Room());

    list->ColumnWidths("");
    const int defaultWidth = View().columnWidth(0);
    for (const char* nonsense : {",,", "x,y", "-5,nan,inf", "12px", "1,2,3,4,5,,,", "99999999999999999999,0"}) {
        list->ColumnWidths(nonsense);
        ExpectAllInSight(nonsense);
    }
    list->ColumnWidths("x");
    EXPECT_EQ(View().columnWidth(0), defaultWidth);
}

TEST_F(ListboxColumnsTest, DraggingAnEdgeMovesThatEdgeAlone) {
    list->ColumnWidths("100,,");
    const std::vector<int> before = Shown();
    DragEdge(1, {2000, 20});
    EXPECT_EQ(Shown(), (std::vector<int>{100, before[1] + 20, before[2] - 20})) << "the way back gives back";
    EXPECT_EQ(Widths(), "100," + std::to_string(before[1] + 20) + ",");
    list->ColumnsResizable(false);
    DragEdge(1, {20});
    EXPECT_EQ(View().columnWidth(1), before[1] + 20);
}

TEST_F(ListboxColumnsTest, RoomIsSharedByWhatStandsThere) {
    const char* const beginning = "Evening on the island of";
    list->ColumnCount(5);
    list->Heading(1, "Comp. Size(MB)");
    list->Heading(3, "Nothing here");
    for (int i = 0; i < 3; ++i) list->AddRow(String(beginning) + " Linden 1999.jpg", "999.99", "8 bit JPEG image");
    list->AddRow("a.jpg", "1.00", String(std::string(5000, 'x')));
    for (const auto& [room, isWide] : {std::pair(380, false), std::pair(600, true)}) {
        list->Width(room);
        Settle();
        list->ShareColumnWidths();
        const std::vector<int> shown = Shown();
        EXPECT_GT(shown[0], WidthOf(beginning));
        EXPECT_GT(shown[1], WidthOf(isWide ? "Comp. Size(MB)" : "999.99"));
        EXPECT_LT(shown[3], WidthOf("Noth\u2026")) << "nothing stands there, and others want more";
        ExpectAllInSight("sharing");
    }
    EXPECT_EQ(Widths(), ",,,,");

    const std::vector<int> before = Shown();
    for (int i = 0; i < 50; ++i) list->AddRow("b", "c", "d", "A long text where nothing stood");
    ASSERT_TRUE(QTest::qWaitFor([this] { return View().verticalScrollBar()->isVisible(); }));
    ExpectAllInSight("a scroll bar");
    EXPECT_EQ(View().columnWidth(3), before[3]) << "nothing jumps, with the scroll bar neither";
    list->Width(700);
    Settle();
    EXPECT_GT(View().columnWidth(3), WidthOf("A long text"));
}

TEST_F(ListboxColumnsTest, NothingPushesAColumnOut) {
    list->AddRow(String(std::string(300, 'w')), "999.99", String(std::string(3000, 'i')));
    list->ShareColumnWidths();
    Settle();
    DoubleClickEdge(0);
    ExpectAllInSight("fitting");
    EXPECT_GT(View().columnWidth(0), 200);
    EXPECT_GT(View().columnWidth(1), WidthOf("999.99"));
    EXPECT_EQ(Widths(), std::to_string(View().columnWidth(0)) + ",,") << "what it got is kept, not what it wanted";
    DoubleClickEdge(1);
    EXPECT_LT(View().columnWidth(1), 2 * WidthOf("999.99")) << "what was too wide gets narrow";
    DragEdge(0, {2000});
    ExpectAllInSight("dragging");
    EXPECT_EQ(Widths().substr(0, 4), std::to_string(View().columnWidth(0)) + ",");
    list->ColumnWidths("1300,66,45");
    ExpectAllInSight("a saved width");
    EXPECT_EQ(View().columnWidth(1), 66) << "the widest gives way";
    list->Width(150);
    Settle();
    ExpectAllInSight("a narrow list");
    EXPECT_EQ(Widths(), "1300,66,45") << "kept for a wider list";
}

}  // namespace
}  // namespace framework::testing
