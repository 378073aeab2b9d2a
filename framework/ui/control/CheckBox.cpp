// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/CheckBox.h"

#include <QCheckBox>

namespace framework {
namespace {

QCheckBox& boxOf(const RectControl& control) {
    return *static_cast<QCheckBox*>(control.Native());
}

}  // namespace

CheckBox::CheckBox() : ButtonControl(new QCheckBox) {}

int CheckBox::State() const {
    switch (boxOf(*this).checkState()) {
        case Qt::Checked:
            return Checked;
        case Qt::PartiallyChecked:
            return Indeterminate;
        default:
            return Unchecked;
    }
}

void CheckBox::State(int state) {
    const Qt::CheckState wanted = state == Checked         ? Qt::Checked
                                  : state == Indeterminate ? Qt::PartiallyChecked
                                                           : Qt::Unchecked;
    boxOf(*this).setTristate(state == Indeterminate);
    boxOf(*this).setCheckState(wanted);
}

void CheckBox::Pressed() {
    // Only the program can leave a box undecided; a person's clicks go between the two other states.
    boxOf(*this).setTristate(false);
    OnAction.Raise(*this);
}

}  // namespace framework
