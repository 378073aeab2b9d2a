// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/FileTypes1.h"

namespace marrowbeck {
namespace {

Ref<FileType> any;
Ref<FileType> specialFolder;

}  // namespace

void FileTypes1::_Initialize() {
    any = New<FileType>("special/any", "", "????", "????");
    specialFolder = New<FileType>("special/folder", "", "fold", "MACS");
}

Ref<FileType> FileTypes1::pAny() {
    return any;
}

Ref<FileType> FileTypes1::pSpecialFolder() {
    return specialFolder;
}

}  // namespace marrowbeck
