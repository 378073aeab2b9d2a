// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/PushButton.h"

#include <QPushButton>

namespace framework {
namespace {

QPushButton& buttonOf(const RectControl& control) {
    return *static_cast<QPushButton*>(control.Native());
}

}  // namespace

PushButton::PushButton() : ButtonControl(new QPushButton) {}

bool PushButton::Default() const {
    return buttonOf(*this).isDefault();
}

void PushButton::Default(bool isDefault) {
    buttonOf(*this).setDefault(isDefault);
}

void PushButton::Push() {
    buttonOf(*this).click();
}

}  // namespace framework
