// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ThumbnailCache.h"

#include "app/OwnFiles.h"
#include "app/Preferences.h"
#include "base/Utf8.h"
#include "framework/core/files/Paths.h"

namespace marrowbeck {
namespace {

/// Bytes of the longest name that a file can have.
constexpr std::size_t kLongestName = 255;

}  // namespace

ThumbnailEntry::ThumbnailEntry(const Ref<FolderItem>& source)
    : source_(source->ShellPath()), hash_(Str(Variant(source_).Hash())) {
    // A name that leaves no room for the hash loses its end: the hash tells entries apart all the same.
    name_ = String(base::wholeCharacters(source->Name().Bytes(), kLongestName - hash_.Bytes().size()));
}

void ThumbnailEntry::MakeFolder() {
    const Ref<FolderItem> folder = Preferences::ThumbnailsFolder();
    Preferences::CreateFolder(folder);
    if (!folder->Exists()) throw NilObjectException("There is no folder for thumbnails.");
}

Ref<FolderItem> ThumbnailEntry::File() const {
    return Preferences::ThumbnailsFolder()->Child(hash_ + name_);
}

String ThumbnailEntry::Command(int width, int height) const {
    constexpr double side = kThumbnailSide;
    // A side of 0 divides by zero, which is no error for doubles: the scale is then 1.
    const double scale = Min(Min(side / width, side / height), 1.0);
    const String escapedName(Paths::EscapeForShell(name_.Bytes()));
    const String options = scale < 1.0 ? "-Z 240 " : "";
    return "sips -s format png " + options + source_ + " --out " + Preferences::ThumbnailsFolder()->ShellPath() + "/" +
           hash_ + escapedName;
}

}  // namespace marrowbeck
