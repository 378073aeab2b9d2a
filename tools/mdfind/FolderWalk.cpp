// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/FolderWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>
#include <vector>

namespace marrowbeck::tools {

namespace {

/// A folder on the way down: its children, sorted, and how far we are.
struct Level {
    std::vector<std::string> children;  ///< a folder's name ends in a slash
    size_t next = 0;
    size_t pathLength = 0;  ///< length of the folder's own path with its slash
};

enum class Kind { other, file, folder };

Kind kindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return Kind::file;
    if (entry.d_type == DT_DIR) return Kind::folder;
    if (entry.d_type != DT_UNKNOWN) return Kind::other;
    // Some file systems tell the kind of an entry only when it is asked for.
    struct stat status {};
    // What cannot be looked at goes for a file, so that it is told of where all files are wanted.
    if (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? Kind::other : Kind::file;
    if (S_ISREG(status.st_mode)) return Kind::file;
    return S_ISDIR(status.st_mode) ? Kind::folder : Kind::other;
}

/// Reads a folder whole, so that nothing stays open while its children are visited.
int readFolder(const std::string& path, int linkFlag, std::vector<std::string>& children) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | linkFlag);
    if (descriptor < 0) return errno;
    DIR* const folder = fdopendir(descriptor);
    if (folder == nullptr) {
        const int failure = errno;
        ::close(descriptor);
        return failure;
    }
    errno = 0;
    while (const dirent* const entry = readdir(folder)) {
        if (entry->d_name[0] != '.') {
            const Kind kind = kindOf(descriptor, *entry);
            if (kind == Kind::file) children.emplace_back(entry->d_name);
            if (kind == Kind::folder) children.push_back(std::string(entry->d_name) + "/");
        }
        errno = 0;
    }
    const int failure = errno;
    closedir(folder);
    // With the slash at their ends folders stand where their contents belong: "a-b" before "a/b".
    std::sort(children.begin(), children.end());
    return failure;
}

}  // namespace

int walkFolder(const std::string& folder,
               const std::function<void(const std::string& path, std::string_view name)>& visit,
               const std::function<void(const std::string& path, int failure)>& skipped) {
    std::string path = folder;
    while (path.ends_with('/')) path.pop_back();
    path += '/';

    std::vector<Level> levels(1);
    levels.back().pathLength = path.size();
    const int failure = readFolder(path, 0, levels.back().children);
    if (failure != 0) return failure;

    while (!levels.empty()) {
        Level& level = levels.back();
        path.resize(level.pathLength);
        if (level.next == level.children.size()) {
            levels.pop_back();
            continue;
        }
        const std::string_view name = level.children[level.next++];
        path += name;
        if (path.size() >= PATH_MAX) {
            skipped(path, ENAMETOOLONG);
            continue;
        }
        if (!name.ends_with('/')) {
            visit(path, name);
            continue;
        }
        Level below;
        below.pathLength = path.size();
        path.pop_back();  // with a trailing slash a link would be followed
        const int refusal = readFolder(path, O_NOFOLLOW, below.children);
        if (refusal != 0) skipped(path, refusal);
        path += '/';
        levels.push_back(std::move(below));
    }
    return 0;
}

}  // namespace marrowbeck::tools
