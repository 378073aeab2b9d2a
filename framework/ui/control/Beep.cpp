// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/Beep.h"

#include <QApplication>

namespace framework {

void Beep() {
    QApplication::beep();
}

}  // namespace framework
