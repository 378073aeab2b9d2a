// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/TargetPlace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <system_error>
#include <utility>

namespace marrowbeck::tools {

namespace {

constexpr int mostLinks = 40;  // as many as the kernel follows

/// Folders and links are held without being read.
constexpr int held = O_PATH | O_NOFOLLOW | O_CLOEXEC;

struct stat statusOf(const base::Descriptor& file) {
    struct stat status {};
    if (::fstat(file.Number(), &status) != 0) status.st_uid = static_cast<uid_t>(-1);  // nobody's
    return status;
}

bool isTrusted(const struct stat& link, const struct stat& folder) {
    const uid_t person = ::geteuid();
    const bool closed = (folder.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    return link.st_uid == person || (closed && (folder.st_uid == person || folder.st_uid == 0));
}

}  // namespace

TargetPlace::TargetPlace(const std::string& path) {
    walk(path);
    if (!error_.empty()) name_.clear();
}

void TargetPlace::walk(std::string path) {
    folder_ = base::Descriptor::Open(path.starts_with('/') ? "/" : ".", O_PATH | O_DIRECTORY);
    while (true) {
        path.erase(0, path.find_first_not_of('/'));
        if (path.empty()) return fail(EISDIR);
        const size_t end = path.find('/');
        const bool last = end == std::string::npos;
        name_ = path.substr(0, end);
        path.erase(0, end);
        base::Descriptor part(::openat(folder_.Number(), name_.c_str(), held));
        if (!part.IsOpen()) {
            if (!last || errno != ENOENT) fail(errno);
            return;
        }
        const mode_t mode = statusOf(part).st_mode;
        if (S_ISLNK(mode)) {
            const std::string target = follow(part);
            if (target.empty()) return;
            if (target.starts_with('/')) folder_ = base::Descriptor::Open("/", O_PATH | O_DIRECTORY);
            path.insert(0, target);
        } else if (S_ISDIR(mode)) {
            folder_ = std::move(part);
        } else {
            if (!last) fail(ENOTDIR);
            return;
        }
        name_.clear();
    }
}

std::string TargetPlace::follow(const base::Descriptor& link) {
    char target[PATH_MAX];
    if (++links_ > mostLinks) {
        fail(ELOOP);
    } else if (!isTrusted(statusOf(link), statusOf(folder_))) {
        error_ = "Leads over another person's link";
    } else if (const ssize_t size = ::readlinkat(link.Number(), "", target, sizeof target); size > 0) {
        return {target, static_cast<size_t>(size)};
    } else {
        fail(size < 0 ? errno : ENOENT);
    }
    return {};
}

void TargetPlace::fail(int number) {
    error_ = std::generic_category().message(number);
}

}  // namespace marrowbeck::tools
