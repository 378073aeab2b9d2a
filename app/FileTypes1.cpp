// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/FileTypes1.h"

namespace marrowbeck {

void FileTypes1::_Initialize() {
    pAny = New<FileType>("special/any", "", "????", "????");
    pSpecialFolder = New<FileType>("special/folder", "", "fold", "MACS");
}

}  // namespace marrowbeck
