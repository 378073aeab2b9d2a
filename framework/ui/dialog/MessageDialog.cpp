// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/dialog/MessageDialog.h"

#include <QPushButton>

#include "framework/ui/dialog/AlertBox.h"
#include "framework/ui/dialog/DialogRun.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

QMessageBox::Icon toQt(int icon) {
    switch (icon) {
        case MessageDialog::IconNote:
            return QMessageBox::Information;
        case MessageDialog::IconCaution:
            return QMessageBox::Warning;
        case MessageDialog::IconStop:
            return QMessageBox::Critical;
        case MessageDialog::IconQuestion:
            return QMessageBox::Question;
        default:
            return QMessageBox::NoIcon;
    }
}

}  // namespace

Ref<MessageDialogButton> MessageDialog::ShowModal() {
    QAbstractButton* action = nullptr;
    QAbstractButton* alternate = nullptr;
    Ref<MessageDialogButton> answer = cancelButton_;
    native::RunDialog(
        [&] {
            auto* const box = new native::AlertBox(toQt(icon_), title_, message_, explanation_);
            const auto add = [box](const Ref<MessageDialogButton>& button, QMessageBox::ButtonRole role) {
                return button->Visible() ? box->addButton(native::ToQtLiteral(button->Caption()), role) : nullptr;
            };
            QPushButton* const actionButton = add(actionButton_, QMessageBox::AcceptRole);
            QPushButton* const alternateButton = add(alternateButton_, QMessageBox::ActionRole);
            QPushButton* const cancelButton = add(cancelButton_, QMessageBox::RejectRole);
            if (actionButton) box->setDefaultButton(actionButton);
            if (cancelButton) box->setEscapeButton(cancelButton);
            action = actionButton;
            alternate = alternateButton;
            return box;
        },
        [&](QDialog& dialog) {
            const QAbstractButton* const clicked = static_cast<QMessageBox&>(dialog).clickedButton();
            if (clicked && clicked == action) answer = actionButton_;
            if (clicked && clicked == alternate) answer = alternateButton_;
        });
    return answer;
}

}  // namespace framework
