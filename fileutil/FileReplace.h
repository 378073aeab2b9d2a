// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "fileutil/CatalogInfo.h"
#include "fileutil/FileReplaceException.h"
#include "framework/core/core.h"

/// Puts a finished file in the place of another so that no crash, and no loss of power, ever leaves a half-written one:
/// what is at the target's path is the old file or the new one, at every moment. All failures raise
/// FileReplaceException and leave the target as it was.
namespace marrowbeck::FileReplace {

/// Puts `source` in the place of `target`, which need not exist. Both lie on one volume, unless `target` is a link.
/// Where the volume can swap two files in one step, `source` then is the old file; elsewhere it is gone. The new file
/// has the old one's mode, owner and attributes, and its own modification time. Where `target` is a link, what it leads
/// to is replaced. Returns when all of it is on the disk.
void Replace(const Ref<FolderItem>& source, const Ref<FolderItem>& target);

/// Puts a copy of `source` in the place of `target`, which may lie on another volume; `source` stays as it is. For the
/// rest as Replace.
void ReplaceByCopy(const Ref<FolderItem>& source, const Ref<FolderItem>& target);

/// Whether the volume of `item` swaps two files in one step. Asks by trying, on two scratch files beside the item; no
/// answer is kept, since a volume is mounted anew more easily than files are saved. False where no scratch file can be
/// made.
bool VolumeSupportsFSExchangeObjects(const Ref<FolderItem>& item);

/// The second way: renames `source` over `target` and puts the target's catalog information back. A failure of the
/// latter is silent.
void Rename(const Ref<FolderItem>& source, const Ref<FolderItem>& target);

/// The catalog information that a file in this place shall keep; Nil when there is nothing.
Ref<CatalogInfo> GetCatalogInfoForRename(const Ref<FolderItem>& item);

/// The path for the operating system, existing or not; empty for Nil.
String POSIXPath(const Ref<FolderItem>& item);

}  // namespace marrowbeck::FileReplace
