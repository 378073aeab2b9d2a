// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/RadioButton.h"

#include <QRadioButton>

namespace framework {

RadioButton::RadioButton() : ButtonControl(new QRadioButton) {}

bool RadioButton::Value() const {
    return Button().isChecked();
}

void RadioButton::Value(bool value) {
    // A button of an exclusive group refuses to be cleared; the program may leave the choice open.
    Button().setAutoExclusive(value);
    Button().setChecked(value);
    Button().setAutoExclusive(true);
}

}  // namespace framework
