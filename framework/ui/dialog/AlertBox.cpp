// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/dialog/AlertBox.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <algorithm>

#include "framework/ui/dialog/DialogRun.h"
#include "framework/ui/drawing/CutText.h"
#include "framework/ui/drawing/Native.h"

namespace framework {

namespace {

/// How much of a text is shown, at most.
struct Measure {
    qsizetype characters;
    qsizetype lines;
};

/// A longer text is no message to a person any more, and the box would outgrow the screen.
constexpr Measure kMessage{2000, 30};
/// A longer explanation scrolls, in an area of so many lines.
constexpr Measure kStanding{600, 12};
/// Enough for a year's changes. The toolkit would hold up the window to lay out more.
constexpr Measure kScrolling{20'000, 2'000};
/// The width of the area that scrolls, in letters.
constexpr int kLineLength = 60;

/// Where the text exceeds the measure; its size where it does not.
qsizetype endWithin(const QString& text, Measure measure) {
    qsizetype end = -1;
    for (qsizetype line = 0; line < measure.lines; ++line) {
        end = text.indexOf(QLatin1Char('\n'), end + 1);
        if (end < 0) return std::min(text.size(), measure.characters);
        if (end >= measure.characters) return measure.characters;
    }
    return end;
}

QString forReading(const String& text, Measure most) {
    QString shown = native::ToQt(text);
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const qsizetype end = native::CutPlace(shown, endWithin(shown, most));
    return end < shown.size() ? shown.left(end) + native::kRest : shown;
}

/// A text that is moved through with the keys and with a screen reader's cursor. Return and Escape stay the box's.
QWidget* scrollingText(const QString& text) {
    auto* const area = new QPlainTextEdit;
    area->setAccessibleName(QStringLiteral("Explanation"));
    area->setTabChangesFocus(true);
    area->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // A word that is longer than a line is scrolled to: to break it anywhere takes the toolkit long.
    area->setWordWrapMode(QTextOption::WordWrap);
    area->setPlainText(text);
    const QFontMetrics metrics = area->fontMetrics();
    area->setMinimumSize(metrics.averageCharWidth() * kLineLength,
                         metrics.lineSpacing() * static_cast<int>(kStanding.lines));
    return area;
}

}  // namespace

native::AlertBox::AlertBox(QMessageBox::Icon icon, const String& title, const String& message,
                           const String& explanation)
    : QMessageBox(DialogParent()) {
    setWindowModality(Qt::ApplicationModal);
    setTextFormat(Qt::PlainText);
    setIcon(icon);
    setWindowTitle(ToQt(title));
    setText(forReading(message, kMessage));
    makeRoomForTitle();
    if (explanation.IsEmpty()) return;
    explain(forReading(explanation, kScrolling));
    if (auto* const label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    }
}

/// A short text alone makes a box whose title the desktop has to cut. It may center that between an icon on one side
/// and three buttons on the other, and its letters are wider than ours.
void native::AlertBox::makeRoomForTitle() {
    constexpr int kHeightsBeside = 14;
    const QFontMetrics metrics = fontMetrics();
    const int width = metrics.horizontalAdvance(windowTitle()) * 5 / 4 + kHeightsBeside * metrics.height();
    if (auto* const grid = qobject_cast<QGridLayout*>(layout())) {
        grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
}

void native::AlertBox::explain(const QString& text) {
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    if (grid && endWithin(text, kStanding) < text.size()) {
        grid->addWidget(scrollingText(text), 1, grid->columnCount() - 1);
        return;
    }
    setInformativeText(text);
    if (auto* const label = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        label->setTextFormat(Qt::PlainText);
    }
}

void internal::PresentAlert(const String& text) {
    native::RunDialog(
        [&text] {
            const String title = native::FromQt(QCoreApplication::applicationName());
            auto* const box = new native::AlertBox(QMessageBox::Information, title, text);
            box->setStandardButtons(QMessageBox::Ok);
            return box;
        },
        [](QDialog&) {});
}

}  // namespace framework
