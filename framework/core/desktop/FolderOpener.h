// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"

namespace framework::internal {

/// Opens a folder in the program that the desktop has for folders. This program may be set for them itself, and is
/// passed over then: who asks it for a folder wants to see that elsewhere. The program gets `activationToken`, if there
/// is one. False where no other one can be started.
bool OpenFolderElsewhere(const Ref<FolderItem>& folder, const String& activationToken);

}  // namespace framework::internal
