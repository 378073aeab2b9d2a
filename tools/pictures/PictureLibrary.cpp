// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/PictureLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace marrowbeck::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* moduleName = "pictures.so";

/// The module, which lies beside the program and nowhere else: one that is found where others may write is their code.
/// Empty where there is none.
fs::path modulePath() {
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure);
    if (failure) return {};
    return fs::canonical(program.parent_path() / moduleName, failure);
}

/// Found before this process may be confined, and so before anything else looks.
struct Places {
    fs::path module = modulePath();
    fs::path data = module.parent_path().parent_path().parent_path() / "share/marrowbeck/imagemagick";
};

const Places& places() {
    static const Places found;
    return found;
}

PictureLibrary* load() {
    if (places().module.empty()) return nullptr;
    // Never unloaded: the library registers types for good.
    void* const module = dlopen(places().module.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (module == nullptr) return nullptr;
    using Make = PictureLibrary*(const char*, const char*);
    auto* const make = reinterpret_cast<Make*>(dlsym(module, "makePictureLibrary"));
    return make == nullptr ? nullptr : make(places().module.parent_path().c_str(), places().data.c_str());
}

}  // namespace

PictureLibrary* pictureLibrary() {
    static PictureLibrary* const library = load();
    return library;
}

std::vector<std::string> pictureLibraryFolders() {
    if (places().module.empty()) return {};
    return {places().module.parent_path(), places().data};
}

}  // namespace marrowbeck::tools
