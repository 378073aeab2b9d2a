// SPDX-License-Identifier: GPL-2.0-or-later
#include "fileutil/PathItems.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "framework/core/files/Paths.h"

namespace marrowbeck {
namespace {

/// As many folders as are asked about at once, and in as many of the paths that come next they are looked for.
constexpr std::size_t kFoldersAtOnce = 64;
constexpr int kPathsAhead = 4096;
/// What is known of more folders than these is forgotten. One to which the paths come back is asked about again.
constexpr std::size_t kMostKept = 1024;

}  // namespace

Ref<FolderItem> PathItems::At(int index) {
    const std::string path = Paths::Normalise(paths_(index).Bytes());
    if (path.empty()) return Nil;
    std::string folder(Paths::EnclosingFolder(path));
    if (folder.empty()) return GetFolderItem("/");
    if (!folders_.contains(folder)) askFrom(index, folder);
    const Ref<FolderItem> parent = folders_[folder];
    return parent ? parent->TrueChild(String(Paths::LastPart(path))) : Nil;
}

void PathItems::askFrom(int index, std::string folder) {
    if (folders_.size() > kMostKept) folders_.clear();
    std::vector<std::string> asked{std::move(folder)};
    std::string_view last = Paths::EnclosingFolder(paths_(index).Bytes());
    const int end = std::min(index + kPathsAhead, paths_.Ubound());
    for (int i = index + 1; i <= end; ++i) {
        const std::string_view next = Paths::EnclosingFolder(paths_(i).Bytes());
        // Paths of one folder mostly stand together.
        if (next == last || next.empty()) continue;
        last = next;
        std::string name(next);
        if (folders_.contains(name) || std::find(asked.begin(), asked.end(), name) != asked.end()) continue;
        if (asked.size() == kFoldersAtOnce) break;
        asked.push_back(std::move(name));
    }
    const std::vector<Ref<FolderItem>> found = FoldersOf(asked);
    for (std::size_t i = 0; i < asked.size(); ++i) folders_.insert_or_assign(std::move(asked[i]), found[i]);
}

}  // namespace marrowbeck
