#include "framework/ui/Beep.h"

#include <QApplication>

namespace framework {

void Beep() {
    QApplication::beep();
}

}  // namespace framework
