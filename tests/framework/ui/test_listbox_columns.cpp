#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

int sum(const std::string& widths) {
    int total = 0;
    for (std::size_t i = 0; i < widths.size(); i = widths.find(',', i), i = i == std::string::npos ? i : i + 1) {
        total += std::stoi(widths.substr(i));
    }
    return total;
}

class ListboxColumnsTest : public ListboxTest {
  protected:
    std::string Widths() { return list->ColumnWidths().ToStd(); }
    int Room() { return View().viewport()->width(); }

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

TEST_F(ListboxColumnsTest, WidthsComeBackAsTheyWereSaved) {
    list->ColumnWidths("150,60,200");
    EXPECT_EQ(Widths(), "150,60,200");
    list->ColumnWidths("");
    EXPECT_NE(Widths(), "150,60,200");
    list->ColumnWidths("150,60,200");
    EXPECT_EQ(Widths(), "150,60,200");
}

TEST_F(ListboxColumnsTest, WidthsCanBeSetBeforeTheListIsShown) {
    const auto fresh = New<Listbox>();
    fresh->Place(0, 0, 500, 200);
    fresh->ColumnCount(2);
    fresh->ColumnWidths("*,300");
    const std::string widths = fresh->ColumnWidths().ToStd();
    fresh->Native()->show();
    Settle();
    EXPECT_EQ(fresh->ColumnWidths().ToStd(), widths);
    EXPECT_NEAR(sum(widths), 500, 4);
}

TEST_F(ListboxColumnsTest, TheLastColumnTakesTheRoomThatIsLeft) {
    EXPECT_EQ(sum(Widths()), Room());
    list->ColumnWidths("50,60,70");
    EXPECT_EQ(Widths(), "50,60," + std::to_string(Room() - 110));
    list->Width(600);
    Settle();
    EXPECT_EQ(sum(Widths()), Room());
    list->ColumnWidths("300,300,100");
    EXPECT_EQ(Widths(), "300,300,100");
}

TEST_F(ListboxColumnsTest, SharesAndNonsenseAreTolerated) {
    list->ColumnWidths("25%,*,3*");
    EXPECT_EQ(View().columnWidth(0), Room() / 4);
    EXPECT_NEAR(View().columnWidth(2), 3 * View().columnWidth(1), 3);
    EXPECT_EQ(sum(Widths()), Room());

    list->ColumnWidths("");
    const std::string defaults = Widths();
    for (const char* nonsense : {",,", "x,y", "-5,nan,inf", "12px", "1,2,3,4,5,,,", "99999999999999999999,0"}) {
        list->ColumnWidths(nonsense);
        for (int column = 0; column < 3; ++column) {
            EXPECT_GE(View().columnWidth(column), 20) << nonsense;
            EXPECT_LE(View().columnWidth(column), 5000) << nonsense;
        }
    }
    list->ColumnWidths("x");
    EXPECT_EQ(Widths(), defaults);
}

TEST_F(ListboxColumnsTest, DraggingAnEdgeMovesThatEdgeAlone) {
    list->ColumnWidths("100,100,50");
    const int first = View().columnWidth(0);
    const int second = View().columnWidth(1);
    DragEdge(1, 20);
    EXPECT_EQ(View().columnWidth(1), second + 20);
    EXPECT_EQ(View().columnWidth(0), first);
    EXPECT_EQ(sum(Widths()), Room());

    list->ColumnsResizable(false);
    DragEdge(1, 20);
    EXPECT_EQ(View().columnWidth(1), second + 20);
}

TEST_F(ListboxColumnsTest, HeadingsAreReadInFullByDefault) {
    list->ColumnCount(11);
    int column = 0;
    for (const char* heading : {"Filename", "Size(MB)", "Comp. Size(MB)", "Pixels ", "Tagged Profile", "Copyright",
                                "Keywords", "Kind", "EXIF", "Format", "Caption"}) {
        list->Heading(column++, heading);
    }
    list->Width(806);
    Settle();
    EXPECT_EQ(list->Heading(3).ToStd(), "Pixels ");
    const QFontMetrics metrics(View().horizontalHeader()->font());
    for (column = 0; column < 11; ++column) {
        const QString heading = View().model()->headerData(column, Qt::Horizontal).toString().trimmed();
        EXPECT_GT(View().columnWidth(column), metrics.horizontalAdvance(heading)) << column;
    }
    EXPECT_GE(View().columnWidth(0), 100);
}

TEST_F(ListboxColumnsTest, TheHeadingStateOfColumnsThatAreNotThere) {
    list->HeadingIndex(7);
    EXPECT_EQ(list->HeadingIndex(), -1);
    EXPECT_EQ(list->ColumnSortDirection(-1), 0);
    list->ColumnSortDirection(-1, 1);
    EXPECT_EQ(list->ColumnSortDirection(-1), 0);
    list->HeadingIndex(2);
    list->ColumnSortDirection(2, -1);
    EXPECT_EQ(list->ColumnSortDirection(2), -1);
    EXPECT_EQ(View().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    list->ColumnCount(2);
    EXPECT_EQ(list->HeadingIndex(), -1);
}

TEST_F(ListboxColumnsTest, ScrollBarsShowAsAskedFor) {
    list->ColumnWidths("300,300,300");
    EXPECT_EQ(View().horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    list->ScrollbarHorizontal(true);
    EXPECT_EQ(View().horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    list->AutoHideScrollbars(false);
    EXPECT_EQ(View().horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    list->ScrollBarVertical(false);
    EXPECT_EQ(View().verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST_F(ListboxColumnsTest, ColumnsBeyondTheEdgeAreReachedByKeyWithoutAScrollBar) {
    list->ColumnWidths("300,300,300");
    Add({"a"});
    Click(0);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_LE(View().columnViewportPosition(2), Room() - 300);
    EXPECT_EQ(Selection(), "a");
}

}  // namespace
}  // namespace framework::testing
