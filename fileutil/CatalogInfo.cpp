// SPDX-License-Identifier: GPL-2.0-or-later
#include "fileutil/CatalogInfo.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace marrowbeck {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

/// What a call that tells how much room it needs has to say; empty on failure.
template <class Call>
std::string readAll(Call call) {
    const ssize_t size = call(nullptr, 0);
    if (size <= 0) return {};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const ssize_t count = call(bytes.data(), bytes.size());
    // What has grown meanwhile is as good as unreadable.
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

}  // namespace

Ref<CatalogInfo> CatalogInfo::Read(const String& path) {
    const char* const file = path.CString();
    const auto info = New<CatalogInfo>();
    if (lstat(file, &info->status_) != 0) return Nil;
    const std::string names = readAll([&](char* bytes, std::size_t size) { return llistxattr(file, bytes, size); });
    for (const char* name = names.c_str(); name < names.c_str() + names.size(); name += std::strlen(name) + 1) {
        info->attributes_.emplace_back(
            name, readAll([&](char* bytes, std::size_t size) { return lgetxattr(file, name, bytes, size); }));
    }
    return info;
}

void CatalogInfo::ApplyTo(const String& path) const {
    // What a link that leads nowhere says of itself, such as its mode of 0777, holds for no file.
    if (S_ISLNK(status_.st_mode)) return;
    const char* const file = path.CString();
    mode_t mode = status_.st_mode & 07777;
    if (lchown(file, status_.st_uid, status_.st_gid) != 0) {
        // Another owner's rights are not to be had under that owner's name.
        mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
        if (lchown(file, static_cast<uid_t>(-1), status_.st_gid) != 0) errno = 0;
    }
    // A list that came with the new file would outlive its mode.
    lremovexattr(file, kAccessList);
    for (const auto& [name, value] : attributes_) lsetxattr(file, name.c_str(), value.data(), value.size(), 0);
    // Where that fails, the new file stays its owner's alone, as it was made.
    [[maybe_unused]] const int widened = fchmodat(AT_FDCWD, file, mode, 0);
    const timespec times[2] = {status_.st_atim, {0, UTIME_OMIT}};
    utimensat(AT_FDCWD, file, times, AT_SYMLINK_NOFOLLOW);
}

}  // namespace marrowbeck
