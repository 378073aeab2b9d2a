// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"

namespace framework {

/// The number of mounted volumes.
int VolumeCount();
/// The root folder of the volume at `index`, from 0; Nil when there is none. The root of all is the first, the others
/// come in the order in which they were mounted.
Ref<FolderItem> Volume(int index);

}  // namespace framework
