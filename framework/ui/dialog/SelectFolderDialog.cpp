// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/dialog/SelectFolderDialog.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <string>
#include <string_view>

#include "framework/ui/dialog/DialogRun.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework {
namespace {

/// The desktop's own dialog, where the toolkit knows one, or else the toolkit's.
class Chooser : public QFileDialog {
  public:
    Chooser(QWidget* parent, const QString& title, const QString& prompt) : QFileDialog(parent) {
        setOption(QFileDialog::ShowDirsOnly);
        setFileMode(QFileDialog::Directory);
        setWindowTitle(title);
        if (prompt.isEmpty()) return;
        if (!layout()) {
            // The desktop's has no other place for the prompt.
            setWindowTitle(title.isEmpty() ? prompt : title + QStringLiteral(": ") + prompt);
            return;
        }
        auto* const label = new QLabel(prompt, this);
        label->setTextFormat(Qt::PlainText);
        label->setObjectName(QStringLiteral("PromptText"));
        const QMargins margins = layout()->contentsMargins();
        label->setContentsMargins(margins.left(), margins.top(), margins.right(), 0);
        layout()->setMenuBar(label);  // the place above everything else
    }
};

/// How long the dialog waits for the folder in which it is to open, in milliseconds. It asks the disk from the window's
/// own stack, so that one which takes longer is nothing for it.
constexpr int kPatience = 1000;

QString startOf(const Ref<FolderItem>& folder) {
    const std::string path = folder ? folder->FolderWithin(kPatience).ToStd() : std::string();
    return path.empty() ? QDir::homePath() : QFile::decodeName(QByteArray::fromStdString(path));
}

}  // namespace

Ref<FolderItem> SelectFolderDialog::ShowModalWithin(const Ref<Window>& window) {
    Ref<FolderItem> chosen;
    const QString start = startOf(initialDirectory_);
    native::RunDialog(
        [&] {
            QWidget* const parent = window ? window->Native() : native::DialogParent();
            auto* const dialog = new Chooser(parent, native::ToQt(title_), native::ToQt(promptText_));
            dialog->setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
            dialog->setDirectory(start);
            if (!actionButtonCaption_.IsEmpty()) {
                dialog->setLabelText(QFileDialog::Accept, native::ToQtLiteral(actionButtonCaption_));
            }
            return dialog;
        },
        [&](QDialog& dialog) {
            const QStringList files = static_cast<QFileDialog&>(dialog).selectedFiles();
            if (dialog.result() != QDialog::Accepted || files.isEmpty()) return;
            const QByteArray path = QFile::encodeName(files.front());
            chosen = New<FolderItem>(String(std::string_view(path.constData(), static_cast<std::size_t>(path.size()))));
        });
    return chosen;
}

Ref<FolderItem> SelectFolderDialog::ShowModal() {
    return ShowModalWithin(Nil);
}

}  // namespace framework
