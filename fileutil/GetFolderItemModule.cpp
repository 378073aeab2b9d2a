// SPDX-License-Identifier: GPL-2.0-or-later
#include "fileutil/GetFolderItemModule.h"

#include "fileutil/PathItems.h"

namespace marrowbeck {

Ref<FolderItem> GetFolderItemModule::GetFolderItemFromShellPath(const String& path) {
    const Array<String> paths{path};
    return PathItems(paths).At(0);
}

}  // namespace marrowbeck
