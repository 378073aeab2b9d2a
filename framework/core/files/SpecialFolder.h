// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/files/FolderItem.h"

/// The folders of the person who runs the program. Each is looked up anew with every call, whether it exists or not.
/// The disk is asked about them directly; about the pictures, which lie far away perhaps, not even whether they are a
/// link.
namespace framework::SpecialFolder {

/// Where programs keep their data: `XDG_DATA_HOME` by the XDG Base Directory Specification, else `~/.local/share`.
Ref<FolderItem> ApplicationData();
/// `HOME`, else the home folder by the system's list of users.
Ref<FolderItem> Home();
/// The desktop, the downloads and the pictures by the desktop's own setting, the file `user-dirs.dirs`; else
/// `~/Desktop`, `~/Downloads`, `~/Pictures`.
Ref<FolderItem> Desktop();
Ref<FolderItem> Downloads();
Ref<FolderItem> Pictures();
/// `TMPDIR`, else `/tmp`.
Ref<FolderItem> Temporary();

}  // namespace framework::SpecialFolder
