// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Pictures.h"

namespace marrowbeck {
namespace {

Ref<Picture> loadedOnce(Ref<Picture>& kept, const char* name) {
    if (!kept) {
        if (const Ref<FolderItem> resources = _GetApplicationBundleResources()) {
            kept = OpenAsPicture(resources->Child(name));
        }
    }
    return kept;
}

}  // namespace

Ref<Picture> Pictures::find() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "find.png");
}

Ref<Picture> Pictures::folder() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "folder.png");
}

Ref<Picture> Pictures::image_alt() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "image_alt.png");
}

Ref<Picture> Pictures::reload() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "reload.png");
}

Ref<Picture> Pictures::stop() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "stop.png");
}

Ref<Picture> Pictures::Marrowbeck_small() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "Marrowbeck_small.png");
}

Ref<Picture> Pictures::zn240() {
    static Ref<Picture> kept;
    return loadedOnce(kept, "zn240.tiff");
}

}  // namespace marrowbeck
