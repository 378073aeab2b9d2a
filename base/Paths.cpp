// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/Paths.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>

namespace base {

namespace {

struct Free {
    void operator()(char* block) const { std::free(block); }
};
using CText = std::unique_ptr<char, Free>;

/// The path with all links on its way resolved; the path as it is when nothing is there.
std::string real(const std::string& path) {
    const CText resolved(::realpath(path.c_str(), nullptr));
    return resolved ? resolved.get() : path;
}

/// Where the link at `path` leads, empty when there is no link.
std::string linkTarget(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t size = ::readlink(path.c_str(), target, sizeof target);
    if (size <= 0) return {};
    const std::string_view text(target, static_cast<std::size_t>(size));
    return text.front() == '/' ? std::string(text) : joined(enclosingFolder(path), text);
}

std::string_view takePart(std::string_view& path) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return part;
}

}  // namespace

std::string_view lastPart(std::string_view path) {
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

std::string_view enclosingFolder(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (path.size() <= 1 || slash == std::string_view::npos) return {};
    return path.substr(0, slash == 0 ? 1 : slash);
}

std::string joined(std::string_view folder, std::string_view name) {
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (!folder.ends_with('/')) path += '/';
    return path += name;
}

std::string absolutePath(std::string_view path) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return {};
    if (path.front() == '/') return std::string(path);
    const CText folder(::getcwd(nullptr, 0));
    return joined(folder ? folder.get() : "/", path);
}

std::string cleanPath(std::string_view path) {
    const std::string whole = absolutePath(path);
    if (whole.empty()) return {};
    std::string clean = "/";
    for (std::string_view rest = whole; !rest.empty();) {
        const std::string_view part = takePart(rest);
        if (part.empty() || part == ".") continue;
        if (part == "..") {
            const std::string here = real(clean);
            const std::string_view above = enclosingFolder(here);
            clean = above.empty() ? "/" : std::string(above);
        } else {
            clean = joined(clean, part);
        }
    }
    return clean;
}

bool goesUp(std::string_view path) {
    while (!path.empty()) {
        if (takePart(path) == "..") return true;
    }
    return false;
}

std::string followedLink(std::string path) {
    constexpr int mostLinks = 40;  // as many as the kernel follows
    std::string first = path;
    for (int links = 0; links <= mostLinks; ++links) {
        const std::string target = linkTarget(path);
        if (target.empty()) return path;
        path = cleanPath(target);
    }
    return first;
}

}  // namespace base
