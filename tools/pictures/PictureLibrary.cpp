// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/PictureLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace marrowbeck::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* moduleName = "pictures.so";

/// Where the module lies: beside the tool, or for a program of another folder, such as a test, where it was built.
fs::path moduleFolder() {
    std::error_code failure;
    const fs::path own = fs::read_symlink("/proc/self/exe", failure).parent_path();
    return fs::exists(own / moduleName, failure) ? own : fs::path(MARROWBECK_LIBEXEC_DIR);
}

/// Found before this process may be confined, and so before anything else looks.
struct Folders {
    fs::path module = moduleFolder();
    fs::path data = module.parent_path().parent_path() / "share/marrowbeck/imagemagick";
};

const Folders& folders() {
    static const Folders found;
    return found;
}

PictureLibrary* load() {
    const fs::path path = folders().module / moduleName;
    // Never unloaded: the library registers types for good.
    void* const module = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (module == nullptr) return nullptr;
    using Make = PictureLibrary*(const char*);
    auto* const make = reinterpret_cast<Make*>(dlsym(module, "makePictureLibrary"));
    return make == nullptr ? nullptr : make(folders().data.c_str());
}

}  // namespace

PictureLibrary* pictureLibrary() {
    static PictureLibrary* const library = load();
    return library;
}

std::vector<std::string> pictureLibraryFolders() {
    return {folders().module, folders().data};
}

}  // namespace marrowbeck::tools
