// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/GroupBox.h"

#include <QGroupBox>

#include "framework/ui/drawing/Native.h"

namespace framework {

GroupBox::GroupBox() : TextControl(new QGroupBox) {}

void GroupBox::Caption(const String& caption) {
    caption_ = caption;
    static_cast<QGroupBox*>(Native())->setTitle(native::ToQtLiteral(caption));
    UpdateAccessibleName();
}

}  // namespace framework
