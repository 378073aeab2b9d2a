// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/ApplicationPaths.h"

namespace framework {

namespace {

struct Settings {
    String name;
    Ref<FolderItem> prefix;
};

Settings& settings() {
    static Settings settings;
    return settings;
}

Ref<FolderItem> executable() {
    return GetFolderItem("/proc/self/exe");
}

Ref<FolderItem> prefix() {
    return settings().prefix ? settings().prefix : executable()->Parent()->Child("..");
}

Ref<FolderItem> applicationFolder(const char* area) {
    const String name = settings().name.IsEmpty() ? executable()->Name() : settings().name;
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
    settings().name = name;
}

void ApplicationPaths::SetPrefix(const Ref<FolderItem>& prefix) {
    settings().prefix = prefix;
}

}  // namespace framework
