// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

namespace framework::native {

/// The window on which a dialog that names none is to stand, null when there is none.
QWidget* DialogParent();

/// Opens the dialog that `make` builds, on the main stack, and waits until it is closed; then `answered` reads it. A
/// program that quits meanwhile, or a thread that is killed while it waits, closes the dialog unanswered.
void RunDialog(const std::function<QDialog*()>& make, const std::function<void(QDialog& dialog)>& answered);

}  // namespace framework::native
