// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/ApplicationPaths.h"

namespace framework {

namespace {

String& nameInPaths() {
    static String name;
    return name;
}

Ref<FolderItem> executable() {
    return FolderItem::Own("/proc/self/exe");
}

Ref<FolderItem> prefix() {
    return executable()->Parent()->Child("..");
}

Ref<FolderItem> applicationFolder(const char* area) {
    const String name = nameInPaths().IsEmpty() ? executable()->Name() : nameInPaths();
    return prefix()->Child(area)->Child(name);
}

Ref<FolderItem> ifPresent(const Ref<FolderItem>& folder) {
    return folder->Directory() ? folder : Nil;
}

}  // namespace

Ref<FolderItem> _GetApplicationBundleResources() {
    return ifPresent(applicationFolder("share")->Child("resources"));
}

Ref<FolderItem> ApplicationToolsFolder() {
    return ifPresent(applicationFolder("libexec"));
}

Ref<FolderItem> ApplicationIconsFolder() {
    return ifPresent(prefix()->Child("share")->Child("icons"));
}

void ApplicationPaths::SetName(const String& name) {
    nameInPaths() = name;
}

}  // namespace framework
