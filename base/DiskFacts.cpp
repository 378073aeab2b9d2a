// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/DiskFacts.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <memory>
#include <utility>

namespace base {

namespace {

PathKind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return PathKind::file;
    if (S_ISDIR(mode)) return PathKind::folder;
    return S_ISLNK(mode) ? PathKind::link : PathKind::other;
}

PathKind kindOf(unsigned char entryType) {
    if (entryType == DT_UNKNOWN) return PathKind::unknown;
    return entryType == DT_LNK ? PathKind::anyLink : kindOf(static_cast<mode_t>(DTTOIF(entryType)));
}

struct Close {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

PathKind kindAt(const char* path) {
    return factsAt(path).kind;
}

PathFacts factsAt(const char* path) {
    struct stat status {};
    PathFacts facts;
    if (::lstat(path, &status) != 0) return facts;
    facts.kind = kindOf(status.st_mode);
    facts.device = static_cast<std::uint64_t>(status.st_dev);
    facts.inode = static_cast<std::uint64_t>(status.st_ino);
    facts.length = static_cast<std::uint64_t>(status.st_size);
    struct stat target {};
    if (facts.kind == PathKind::link && ::stat(path, &target) == 0) {
        if (S_ISREG(target.st_mode)) facts.kind = PathKind::linkToFile;
        facts.length = static_cast<std::uint64_t>(target.st_size);
    }
    return facts;
}

std::string textOf(const PathFacts& facts) {
    std::string text(1, static_cast<char>(facts.kind));
    for (const std::uint64_t number : {facts.length, facts.device, facts.inode}) text += " " + std::to_string(number);
    return text;
}

PathFacts factsFrom(std::string_view text) {
    PathFacts facts;
    if (text.empty()) return facts;
    const auto kind = static_cast<PathKind>(text.front());
    text.remove_prefix(1);
    for (std::uint64_t* const number : {&facts.length, &facts.device, &facts.inode}) {
        if (!text.starts_with(' ')) return {};
        text.remove_prefix(1);
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), *number);
        if (failure != std::errc()) return {};
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    facts.kind = kind;
    return facts;
}

FolderChildren childrenOf(const char* folder, const std::function<void()>& step) {
    FolderChildren children;
    errno = 0;
    const std::unique_ptr<DIR, Close> open(::opendir(folder));
    while (const dirent* const found = open ? ::readdir(open.get()) : nullptr) {
        const std::string_view name = found->d_name;
        if (name != "." && name != "..") children.list.push_back({std::string(name), kindOf(found->d_type)});
        step();
        errno = 0;
    }
    children.failure = errno;
    constexpr std::size_t betweenSteps = 1024;
    std::size_t comparisons = 0;
    std::sort(children.list.begin(), children.list.end(), [&](const FolderChild& one, const FolderChild& other) {
        if (++comparisons % betweenSteps == 0) step();
        return one.name < other.name;
    });
    return children;
}

std::string attributeAt(const char* path, const char* name) {
    std::array<char, 64> value;
    const ssize_t size = ::lgetxattr(path, name, value.data(), value.size());
    return size <= 0 ? std::string() : std::string(value.data(), static_cast<std::size_t>(size));
}

}  // namespace base
