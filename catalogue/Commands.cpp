#include "app/Preferences.h"
#include "app/Window1.h"

namespace marrowbeck {

void Window1::StartSearch() {
    totalnumber->Text("");
    // The thumbnails of the list that is about to go.
    const Ref<FolderItem> thumbnails = Preferences::ThumbnailsFolder();
    if (thumbnails->Exists()) Preferences::deleteFilesFromFolder(thumbnails);
    SizeThread1->Run();
}

}  // namespace marrowbeck
