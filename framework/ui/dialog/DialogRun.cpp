// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/dialog/DialogRun.h"

#include <QApplication>
#include <QPointer>

#include "framework/core/threads/Waiting.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::native {
namespace {

/// A dialog that is on the screen for as long as this lives.
class OpenDialog {
  public:
    OpenDialog() = default;
    ~OpenDialog() {
        if (!dialog_) return;
        dialog_->hide();
        dialog_->deleteLater();
    }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

    void Open(QDialog* dialog, Completion& closed) {
        dialog_ = dialog;
        QObject::connect(dialog, &QDialog::finished, &waiting_, [&closed] { closed.Complete(); });
        QObject::connect(dialog, &QObject::destroyed, &waiting_, [&closed] { closed.Complete(); });
        dialog->show();
        dialog->raise();
        dialog->activateWindow();
    }

    QDialog* Get() const { return dialog_; }

  private:
    QPointer<QDialog> dialog_;
    /// What waited for the dialog is gone with this, and is not told of its end any more. Others are: a screen reader's
    /// side forgets the dialog then, and would take the next at its place for it.
    QObject waiting_;
};

}  // namespace

QWidget* DialogParent() {
    QWidget* window = QApplication::activeWindow();
    while (window && !FrameOf(window)) window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    return window;
}

void RunDialog(const std::function<QDialog*()>& make, const std::function<void(QDialog& dialog)>& answered) {
    Completion closed;
    OpenDialog open;
    RunOnMainStack([&] { open.Open(make(), closed); });
    closed.Wait();
    if (closed.IsComplete() && open.Get()) answered(*open.Get());
}

}  // namespace framework::native
