// SPDX-License-Identifier: GPL-2.0-or-later
#include "fileutil/FileReplace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/Descriptor.h"
#include "framework/core/files/Paths.h"

namespace marrowbeck {
namespace {

bool exchange(const char* one, const char* other) {
    return renameat2(AT_FDCWD, one, AT_FDCWD, other, RENAME_EXCHANGE) == 0;
}

[[noreturn]] void raiseError(int code) {
    throw FileReplaceException(code, std::strerror(code));
}

/// An empty file of a name that nothing else has. What has that name at the end is removed when this goes.
class ScratchFile {
  public:
    explicit ScratchFile(const Ref<FolderItem>& folder)
        : path_(FileReplace::POSIXPath(folder).ToStd() + "/.new-XXXXXX"), file_(mkostemp(path_.data(), O_CLOEXEC)) {}
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        if (Made()) unlink(Path());
    }

    bool Made() const { return file_.IsOpen(); }
    const char* Path() const { return path_.c_str(); }
    String Name() const { return String(Paths::LastPart(path_)); }

  private:
    std::string path_;
    base::Descriptor file_;
};

/// A rename can reach the disk before the bytes of what was renamed.
void syncContent(const Ref<FolderItem>& source) {
    base::Descriptor file = base::Descriptor::OpenForReading(FileReplace::POSIXPath(source).CString());
    if (file.IsOpen() && file.Sync()) return;
    raiseError(errno);
}

/// The names of a folder are written by themselves. The file is in its place: a folder that cannot be synced undoes
/// nothing.
void syncFolder(const Ref<FolderItem>& item) {
    const Ref<FolderItem> folder = item->Parent();
    if (folder) base::Descriptor::Open(FileReplace::POSIXPath(folder).CString(), O_RDONLY | O_DIRECTORY).Sync();
}

bool isOnVolumeOf(const Ref<FolderItem>& item, const Ref<FolderItem>& folder) {
    struct stat one {};
    struct stat other {};
    return stat(FileReplace::POSIXPath(item).CString(), &one) == 0 &&
           stat(FileReplace::POSIXPath(folder).CString(), &other) == 0 && one.st_dev == other.st_dev;
}

/// The swap. The source takes on the target's catalog information first, so that the new file is never, not for a
/// moment, open to more people than the old one.
void exchangeObjects(const Ref<FolderItem>& source, const Ref<FolderItem>& target) {
    const String path = FileReplace::POSIXPath(source);
    const Ref<CatalogInfo> info = FileReplace::GetCatalogInfoForRename(target);
    if (info) info->ApplyTo(path);
    if (exchange(path.CString(), FileReplace::POSIXPath(target).CString())) return;
    throw FileReplaceException(errno, "");
}

}  // namespace

void FileReplace::Replace(const Ref<FolderItem>& source, const Ref<FolderItem>& target) {
    if (!target) throw FileReplaceException(0, "Target parameter is nil.");
    if (!source->Exists()) throw FileReplaceException(0, "Source does not exist.");
    if (source->Directory()) throw FileReplaceException(0, "Source is a directory.");
    // What a person put elsewhere and linked to stays there.
    const Ref<FolderItem> place = FolderItem::Own(target->AbsolutePath());
    if (place->Directory()) throw FileReplaceException(0, "Target is a directory.");
    // A link may lead to another volume, where the source can only arrive as a copy.
    if (!place->AbsolutePath().SameBytes(target->AbsolutePath()) && !isOnVolumeOf(source, place->Parent())) {
        return ReplaceByCopy(source, place);
    }
    syncContent(source);
    if (place->Exists() && VolumeSupportsFSExchangeObjects(source)) {
        exchangeObjects(source, place);
    } else {
        Rename(source, place);
    }
    syncFolder(place);
    syncFolder(source);
}

void FileReplace::ReplaceByCopy(const Ref<FolderItem>& source, const Ref<FolderItem>& target) {
    const Ref<FolderItem> place = FolderItem::Own(target->AbsolutePath());
    const ScratchFile scratch(place->Parent());
    if (!scratch.Made()) raiseError(errno);
    // Made anew under that name, with the source's rights.
    unlink(scratch.Path());
    const Ref<FolderItem> copy = place->Parent()->TrueChild(scratch.Name());
    if (!source->CopyFileTo(copy)) raiseError(errno);
    syncContent(copy);
    Rename(copy, place);
    syncFolder(place);
}

bool FileReplace::VolumeSupportsFSExchangeObjects(const Ref<FolderItem>& item) {
    if (!item) {
        throw FileReplaceException(
            0, "VolumeSupportsFSExchangeObjects called with nil parameter.  This is a logic error.");
    }
    struct stat status {};
    if (lstat(POSIXPath(item).CString(), &status) != 0) throw FileReplaceException(errno, "");
    const ScratchFile one(item->Parent());
    const ScratchFile other(item->Parent());
    return one.Made() && other.Made() && exchange(one.Path(), other.Path());
}

void FileReplace::Rename(const Ref<FolderItem>& source, const Ref<FolderItem>& target) {
    const Ref<CatalogInfo> info = GetCatalogInfoForRename(target);
    const String path = POSIXPath(target);
    if (rename(POSIXPath(source).CString(), path.CString()) != 0) raiseError(errno);
    if (info) info->ApplyTo(path);
}

Ref<CatalogInfo> FileReplace::GetCatalogInfoForRename(const Ref<FolderItem>& item) {
    if (!item || !item->Exists()) return Nil;
    Ref<CatalogInfo> info = CatalogInfo::Read(POSIXPath(item));
    if (!info) throw FileReplaceException(errno, "");
    return info;
}

String FileReplace::POSIXPath(const Ref<FolderItem>& item) {
    return item ? item->AbsolutePath() : String();
}

}  // namespace marrowbeck
