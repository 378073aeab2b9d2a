#include "app/Preferences.h"

namespace marrowbeck {

Ref<FolderItem> Preferences::ThumbnailsFolder() {
    return SpecialFolder::ApplicationData()->Child("Marrowbeck")->Child("thumbnails");
}

void Preferences::deleteFilesFromFolder(const Ref<FolderItem>& folder) {
    CheckStack();
    // From the end, since deleting shifts what follows.
    for (int i = folder->Count(); i >= 1; --i) {
        if (const Ref<FolderItem> item = folder->TrueItem(i)) {
            if (item->Directory()) deleteFilesFromFolder(item);
            item->Delete();
        }
        LoopYield();
    }
}

}  // namespace marrowbeck
