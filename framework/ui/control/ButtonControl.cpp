// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/ButtonControl.h"

#include <QAbstractButton>

#include "framework/ui/drawing/Native.h"

namespace framework {

ButtonControl::ButtonControl(QAbstractButton* button) : TextControl(button) {
    QObject::connect(button, &QAbstractButton::clicked, button, [this] {
        const Ref<ButtonControl> alive(this);
        Pressed();
    });
}

void ButtonControl::Caption(const String& caption) {
    caption_ = caption;
    Button().setText(native::ToQtLiteral(caption));
    UpdateAccessibleName();
}

QAbstractButton& ButtonControl::Button() const {
    return *static_cast<QAbstractButton*>(Native());
}

}  // namespace framework
