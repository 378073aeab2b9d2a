// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QMessageBox>

#include "framework/core/text/String.h"

namespace framework {

namespace native {

/// A message box for texts that come from anywhere: none of them is read as markup, and none makes the box larger than
/// a screen. A message is cut short; an explanation scrolls.
class AlertBox : public QMessageBox {
  public:
    AlertBox(QMessageBox::Icon icon, const String& title, const String& message, const String& explanation = {});

  private:
    void makeRoomForTitle();
    void explain(const QString& text);
};

}  // namespace native

namespace internal {

/// Shows an alert with one button; what MsgBox does once there are windows.
void PresentAlert(const String& text);

}  // namespace internal
}  // namespace framework
