// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"

namespace framework {

/// Shows `item` selected in the desktop's file manager and brings that to the front, by right of the click or key that
/// a person gave this program last: by the file manager's own bus interface, else through the desktop portal, else by
/// opening the folder that it lies in, never in this program. Events are served while the answer is awaited; a call
/// that comes meanwhile says True at once and takes the first one's place. False when all of these fail.
bool RevealInFileManager(const Ref<FolderItem>& item);

}  // namespace framework
