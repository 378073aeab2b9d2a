// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck::GetFolderItemModule {

/// The item of a plain path, byte by byte as another command printed it. Only the enclosing folder has to exist: the
/// item may be of something that is not there, and a link at the end stays a link. Nil when the enclosing folder does
/// not exist or the path is empty. The root has no enclosing folder and is itself.
Ref<FolderItem> GetFolderItemFromShellPath(const String& path);

}  // namespace marrowbeck::GetFolderItemModule
