// SPDX-License-Identifier: GPL-2.0-or-later
#include <QClipboard>
#include <QHelpEvent>
#include <QMimeData>
#include <QToolTip>
#include <QUrl>

#include "framework/core/objects/Exceptions.h"
#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

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

    const std::string deceptive = "photo\u202egpj.exe\u009b\u2069";
    list->Cell(0, 0, String(deceptive));
    list->CellHelpTag(0, 0, String(deceptive));
    EXPECT_EQ(cell.data().toString().toStdString(), "photo\ufffdgpj.exe\ufffd\ufffd");
    EXPECT_FALSE(tipAt(0).contains(QChar(0x202e)));
    EXPECT_EQ(list->Cell(0, 0).ToStd(), deceptive);

    // A picture is four bytes and two units of the toolkit's text, and an accent belongs to its letter.
    for (const char* const part : {"\U0001f5bc", "e\u0301"}) {
        for (std::string text : {"", "x", "xx", "xxx"}) {
            while (text.size() < 20'000) text += part;
            list->Cell(0, 0, String(text));
            list->CellHelpTag(0, 0, String(text));
            for (const QString& shown : {cell.data().toString(), tipAt(0)}) {
                EXPECT_LT(shown.size(), 5'000);
                EXPECT_TRUE(shown.endsWith(QString::fromUtf8(part) + QChar(0x2026))) << part << text.substr(0, 3);
            }
        }
    }
}

TEST_F(ListboxTest, PaintsStripesBelowTheLastRowAndTextThatCanBeRead) {
    QPalette dark;
    dark.setColor(QPalette::Text, Qt::white);
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
    list->Cell(0, 1, "\"a\"");
    list->CellTag(0, 1, "/pictures/a\nb.jpg");
    list->ListIndex(0);
    list->Edit(EditTarget::Command::Copy);
    const QMimeData& copied = *QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(copied.text(), "Filename\t\t\tPath\na\t\"\"\"a\"\"\"\t\t\"/pictures/a\nb.jpg\"");
    EXPECT_EQ(copied.urls(), QList<QUrl>{QUrl("file:///pictures/a%0Ab.jpg")});
    EXPECT_EQ(copied.data("x-special/gnome-copied-files"), "copy\nfile:///pictures/a%0Ab.jpg");
}

}  // namespace
}  // namespace framework::testing
