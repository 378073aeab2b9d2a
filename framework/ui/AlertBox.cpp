#include "framework/ui/AlertBox.h"

#include <QCoreApplication>
#include <QLabel>

#include "framework/ui/DialogRun.h"
#include "framework/ui/Native.h"

namespace framework {

namespace {

/// A longer text is no message to a person any more, and the box would outgrow the screen.
constexpr int kLongestText = 2000;

QString forReading(const String& text) {
    QString shown = native::ToQt(text);
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (shown.size() > kLongestText) shown = shown.left(kLongestText) + QChar(0x2026);
    return shown;
}

}  // namespace

native::AlertBox::AlertBox(QMessageBox::Icon icon, const String& title, const String& message,
                           const String& explanation)
    : QMessageBox(DialogParent()) {
    setWindowModality(Qt::ApplicationModal);
    setTextFormat(Qt::PlainText);
    setIcon(icon);
    setWindowTitle(ToQt(title));
    setText(forReading(message));
    if (explanation.IsEmpty()) return;
    setInformativeText(forReading(explanation));
    if (auto* const label = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        label->setTextFormat(Qt::PlainText);
    }
    if (auto* const label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
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
