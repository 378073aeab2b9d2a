// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"

namespace framework {

/// The folder of the application's own resource files: `share/NAME/resources` beside the folder in which its executable
/// lies, in the build tree as in the installed one. Nil when there is none.
Ref<FolderItem> _GetApplicationBundleResources();
/// The folder of the application's own commands: `libexec/NAME`, likewise.
Ref<FolderItem> ApplicationToolsFolder();
/// The folder of icon themes with the application's own icon, likewise: `share/icons`.
Ref<FolderItem> ApplicationIconsFolder();

namespace ApplicationPaths {

/// The NAME in the paths of the application's folders, the executable's own name unless set.
void SetName(const String& name);

}  // namespace ApplicationPaths
}  // namespace framework
