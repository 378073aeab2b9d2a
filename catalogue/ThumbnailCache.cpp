#include "catalogue/ThumbnailCache.h"

#include "app/Preferences.h"

namespace marrowbeck {
namespace {

/// The preview's sides, in pixels.
constexpr double kLongestSide = 240.0;

}  // namespace

ThumbnailEntry::ThumbnailEntry(const Ref<FolderItem>& source)
    : source_(source->ShellPath()), name_(source->Name()), hash_(Str(Variant(source_).Hash())) {}

void ThumbnailEntry::MakeFolder() {
    Preferences::CreateFolder(Preferences::ThumbnailsFolder());
}

Ref<FolderItem> ThumbnailEntry::File() const {
    return Preferences::ThumbnailsFolder()->Child(hash_ + name_);
}

String ThumbnailEntry::Command(int width, int height) const {
    // A side of 0 divides by zero, which is no error for doubles: the scale is then 1.
    const double scale = Min(Min(kLongestSide / width, kLongestSide / height), 1.0);
    // The last part of the escaped path is escaped itself, so that the shell makes the plain name of it.
    const String escapedName = NthField(source_, "/", CountFields(source_, "/"));
    const String options = scale < 1.0 ? "-Z 240 " : "";
    return "sips -s format png " + options + source_ + " --out " + Preferences::ThumbnailsFolder()->ShellPath() + "/" +
           hash_ + escapedName;
}

}  // namespace marrowbeck
