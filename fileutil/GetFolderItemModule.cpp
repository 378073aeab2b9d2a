// SPDX-License-Identifier: GPL-2.0-or-later
#include "fileutil/GetFolderItemModule.h"

#include <string>
#include <string_view>

#include "framework/core/files/Paths.h"

namespace marrowbeck {

Ref<FolderItem> GetFolderItemModule::GetFolderItemFromShellPath(const String& path) {
    const std::string clean = Paths::Normalise(path.Bytes());
    if (clean.empty()) return Nil;
    const std::string_view folder = Paths::EnclosingFolder(clean);
    if (folder.empty()) return GetFolderItem("/");
    const Ref<FolderItem> parent = GetFolderItem(String(folder));
    return parent->Directory() ? parent->TrueChild(String(Paths::LastPart(clean))) : Nil;
}

}  // namespace marrowbeck
