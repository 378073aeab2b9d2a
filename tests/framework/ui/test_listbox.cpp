// SPDX-License-Identifier: GPL-2.0-or-later
#include <QClipboard>
#include <QHelpEvent>
#include <QMimeData>
#include <QPointer>
#include <QSignalSpy>
#include <QToolTip>
#include <QUrl>

#include "framework/core/objects/Exceptions.h"
#include "tests/framework/ui/ListboxTest.h"
#include "tests/support/EventLoop.h"

namespace framework::testing {
namespace {

using marrowbeck::test::RunUntil;

TEST_F(ListboxTest, RowsAreThereAtOnceAndReachTheViewTogether) {
    Settle();
    QSignalSpy announced(View().model(), &QAbstractItemModel::rowsInserted);
    Add(50);
    EXPECT_EQ(list->ListCount(), 50);
    EXPECT_EQ(list->LastIndex(), 49);
    EXPECT_EQ(list->Cell(49, 0), "row 49");
    EXPECT_EQ(View().model()->rowCount(), 0);
    Settle();
    EXPECT_EQ(View().model()->rowCount(), 50);
    EXPECT_EQ(announced.count(), 1);
}

// Bit by bit, so that the window never stands still for them.
TEST_F(ListboxTest, ManyRowsComeAndGoCompletely) {
    struct Witness : Object {
        explicit Witness(int& count) : living(++count) {}
        ~Witness() override { --living; }
        int& living;
    };
    int living = 0;
    for (const int count : {3000, 4000}) {
        Add(count);
        Settle();
        Add(1);
        for (int row = 0; row <= count; ++row) list->CellTag(row, 0, Ref<Object>(New<Witness>(living)));
        EXPECT_TRUE(RunUntil([&] { return View().model()->rowCount() == count + 1; }));
        list->DeleteAllRows();
        EXPECT_EQ(list->ListCount(), 0);
        EXPECT_EQ(View().model()->rowCount(), 0);
    }
    EXPECT_GT(living, 0);
    EXPECT_TRUE(RunUntil([&] { return living == 0; }));
}

TEST_F(ListboxTest, AChangedCellComesToTheScreen) {
    Add({"before"});
    Settle();
    list->Cell(0, 2, "after");
    QSignalSpy changed(View().model(), &QAbstractItemModel::dataChanged);
    list->Cell(0, 0, "name");
    Settle();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(View().model()->index(0, 0).data().toString(), "name");
    EXPECT_EQ(View().model()->index(0, 2).data().toString(), "after");
}

TEST_F(ListboxTest, RaisesOutsideItsBounds) {
    Add(1);
    for (const auto& [row, column] : {std::pair(-1, 0), std::pair(1, 0), std::pair(0, -1), std::pair(0, 3)}) {
        EXPECT_THROW(list->Cell(row, column), OutOfBoundsException);
        EXPECT_THROW(list->Cell(row, column, "x"), OutOfBoundsException);
        EXPECT_THROW(list->CellTag(row, column), OutOfBoundsException);
        EXPECT_THROW(list->CellTag(row, column, 1), OutOfBoundsException);
        EXPECT_THROW(list->CellHelpTag(row, column, "x"), OutOfBoundsException);
    }
    EXPECT_THROW(list->Selected(1), OutOfBoundsException);
    EXPECT_THROW(list->Selected(1, true), OutOfBoundsException);
    EXPECT_THROW(list->ListIndex(1), OutOfBoundsException);
    EXPECT_THROW(list->RemoveRow(1), OutOfBoundsException);
    EXPECT_THROW(list->Heading(3), OutOfBoundsException);
}

TEST_F(ListboxTest, KeepsTextsTagsAndHelpTagsApart) {
    list->AddRow("a", "b", "c", "too many");
    list->CellHelpTag(0, 1, "help");
    list->CellTag(0, 1, 5);
    list->CellTag(0, 2, "tag");
    list->CellTag(0, 1, Nil);
    EXPECT_EQ(Column(1), "b");
    EXPECT_EQ(list->CellHelpTag(0, 1), "help");
    EXPECT_TRUE(list->CellHelpTag(0, 0).IsEmpty());
    EXPECT_TRUE(list->CellTag(0, 1).IsNil());
    EXPECT_EQ(list->CellTag(0, 2).StringValue(), "tag");

    list->ColumnCount(2);
    list->ColumnCount(4);
    EXPECT_EQ(list->CellHelpTag(0, 1), "help");
    EXPECT_EQ(list->Cell(0, 0), "a");
    EXPECT_TRUE(list->Cell(0, 2).IsEmpty());
    EXPECT_TRUE(list->CellTag(0, 2).IsNil());
}

TEST_F(ListboxTest, EqualTextsShareTheirBytes) {
    const auto landscape = [] { return String(std::string("Land") + "scape"); };
    list->AddRow(landscape(), String("LANDSCAPE"));
    list->AddRow("other");
    list->Cell(1, 2, landscape());
    EXPECT_EQ(list->Cell(0, 0).Bytes().data(), list->Cell(1, 2).Bytes().data());
    EXPECT_EQ(list->Cell(0, 1).ToStd(), "LANDSCAPE");
}

TEST_F(ListboxTest, TheRowLastAddedKeepsItsName) {
    Add({"c", "b", "a"});
    list->HeadingIndex(0);
    list->Sort();
    EXPECT_EQ(Column(0), "a b c");
    EXPECT_EQ(list->LastIndex(), 0);
    list->AddRow("d");
    list->RemoveRow(0);
    EXPECT_EQ(list->LastIndex(), 2);
    list->RemoveRow(2);
    EXPECT_EQ(list->LastIndex(), -1);
}

TEST_F(ListboxTest, SelectingByProgramIsLikeSelectingByHand) {
    Add({"a", "b", "c"});
    list->Selected(0, true);
    EXPECT_EQ(changes, 1);
    list->Selected(0, true);
    EXPECT_EQ(changes, 1);
    list->Selected(2, true);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(Selection(), "a c");
    EXPECT_EQ(list->SelCount(), 2);
    EXPECT_EQ(list->ListIndex(), 0);
    list->Selected(0, false);
    EXPECT_EQ(list->ListIndex(), 2);
    EXPECT_EQ(list->Text(), "c");
    list->ListIndex(1);
    EXPECT_EQ(Selection(), "b");
    list->ListIndex(-1);
    EXPECT_EQ(list->ListIndex(), -1);
    EXPECT_TRUE(list->Text().IsEmpty());

    list->SelectionType(0);
    list->Selected(0, true);
    list->Selected(1, true);
    EXPECT_EQ(Selection(), "b");
}

TEST_F(ListboxTest, RemovingRowsChangesTheSelectionOnlyWhereItTouchesIt) {
    Add({"a", "b", "c"});
    list->ListIndex(2);
    changes = 0;
    list->RemoveRow(0);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Selection(), "c");
    list->RemoveRow(1);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(list->SelCount(), 0);

    list->DeleteAllRows();
    EXPECT_EQ(changes, 1);
    Add({"d", "e"});
    list->Selected(1, true);
    changes = 0;
    list->DeleteAllRows();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(list->ListCount(), 0);
    EXPECT_EQ(list->ListIndex(), -1);
    Add({"f"});
    Settle();
    EXPECT_EQ(View().model()->rowCount(), 1);
}

TEST_F(ListboxTest, ScrollsToARowAsFarAsItGoes) {
    Add(100);
    list->ScrollPosition(40);
    EXPECT_EQ(list->ScrollPosition(), 40);
    list->ScrollPosition(-1);
    EXPECT_EQ(list->ScrollPosition(), 40);
    list->ScrollPosition(99);
    const int last = list->ScrollPosition();
    EXPECT_LT(last, 99);
    EXPECT_TRUE(View().viewport()->rect().contains(PlaceOf(99)));
    list->ScrollPosition(100000);
    EXPECT_EQ(list->ScrollPosition(), last);
}

TEST_F(ListboxTest, ShowsTextsOnOneLineAndNeverAsMarkup) {
    const std::string caption = "<b>first</b>\nsecond line\tof a caption that is longer than the column is wide";
    list->AddRow(String(caption), "short");
    list->CellHelpTag(0, 2, "helps");
    Settle();
    const QModelIndex cell = View().model()->index(0, 0);
    EXPECT_EQ(cell.data().toString().left(24), "<b>first</b> second line");
    EXPECT_EQ(list->Cell(0, 0).ToStd(), caption);

    const auto tipAt = [this](int column) {
        QToolTip::hideText();
        const QPoint place = PlaceOf(0, column);
        QHelpEvent asked(QEvent::ToolTip, place, View().viewport()->mapToGlobal(place));
        QApplication::sendEvent(View().viewport(), &asked);
        return QToolTip::text();
    };
    EXPECT_TRUE(tipAt(1).isEmpty());
    EXPECT_TRUE(tipAt(0).contains("&lt;b&gt;first"));
    EXPECT_EQ(tipAt(2), "helps");
}

TEST_F(ListboxTest, PaintsStripesBelowTheLastRowAndTextThatCanBeRead) {
    QPalette dark;
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, Qt::darkBlue);
    View().setPalette(dark);
    int lastRow = 0;
    list->OnCellBackgroundPaint = [&lastRow](Graphics& g, int row, int) {
        g.ForeColor(row % 2 == 0 ? RGB(236, 243, 254) : RGB(255, 255, 255));
        g.FillRect(0, 0, g.Width(), g.Height());
        lastRow = std::max(lastRow, row);
        return false;
    };
    list->UseFocusRing(false);
    Add({"MMMMMM", ""});
    Settle();
    const int height = View().rowHeight(0);
    const QImage image = View().viewport()->grab().toImage();
    EXPECT_GE(lastRow, image.height() / height);
    for (int row = 2; (row + 1) * height < image.height(); ++row) {
        const QColor stripe = row % 2 == 0 ? QColor(236, 243, 254) : QColor(Qt::white);
        EXPECT_EQ(image.pixelColor(3, row * height + height / 2), stripe) << row;
    }
    const auto darkest = [&](const QImage& shot) {
        int darkestValue = 255;
        for (int x = 0; x < 40; ++x) darkestValue = std::min(darkestValue, shot.pixelColor(x, height / 2).value());
        return darkestValue;
    };
    EXPECT_LT(darkest(image), 80) << "white text on a light stripe";

    list->ListIndex(0);
    const QImage selected = View().viewport()->grab().toImage();
    EXPECT_EQ(selected.pixelColor(View().columnWidth(0) - 8, height / 2), QColor(Qt::darkBlue));
}

TEST_F(ListboxTest, TheWidgetMayOutliveTheList) {
    QWidget window;
    auto placed = New<Listbox>();
    placed->Native()->setParent(&window);
    placed->AddRow("a");
    placed->OnChange = [] { FAIL(); };
    QPointer<QWidget> widget = placed->Native();
    placed = Nil;
    ASSERT_TRUE(widget);
    window.show();
    QTest::mouseClick(static_cast<QTableView*>(widget.data())->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
}

TEST_F(ListboxTest, TheEditMenuSelectsAndCopies) {
    Add({"a", "b"});
    EXPECT_FALSE(list->CanEdit(EditTarget::Command::Copy));
    ASSERT_TRUE(list->CanEdit(EditTarget::Command::SelectAll));
    list->Edit(EditTarget::Command::SelectAll);
    EXPECT_EQ(list->SelCount(), 2);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(list->CanEdit(EditTarget::Command::SelectAll));
    list->Edit(EditTarget::Command::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "a\t0\t\nb\t1\t");

    // Files come along for a file manager, and with headings and paths for a spreadsheet.
    list->Heading(0, "Filename ");
    list->FileTagColumn(1);
    list->CellTag(0, 1, "/pictures/a b.jpg");
    list->ListIndex(0);
    list->Edit(EditTarget::Command::Copy);
    const QMimeData& copied = *QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(copied.text(), "Filename\t\t\tPath\na\t0\t\t/pictures/a b.jpg");
    EXPECT_EQ(copied.urls(), QList<QUrl>{QUrl("file:///pictures/a%20b.jpg")});
}

}  // namespace
}  // namespace framework::testing
