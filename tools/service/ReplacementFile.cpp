// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ReplacementFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace marrowbeck::tools {

namespace {

/// For a process with one thread.
mode_t usualRights() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

ReplacementFile::ReplacementFile(const std::string& path) : place_(path), error_(place_.error()) {
    if (!error_.empty()) return;
    // Not by the folder's path, which may be another one's by now.
    folder_ = "/proc/self/fd/" + std::to_string(place_.folder().Number()) + "/";
    target_ = folder_ + place_.name();
    path_ = folder_ + ".new-XXXXXX";
    file_ = base::Descriptor(::mkostemp(path_.data(), O_CLOEXEC));
    if (!file_.IsOpen()) {
        fail();
    } else if (struct stat old{}; ::lstat(target_.c_str(), &old) != 0) {
        ::fchmod(file_.Number(), usualRights());  // refused, it stays its owner's alone
    }
}

ReplacementFile::~ReplacementFile() {
    if (file_.IsOpen()) ::unlink(path_.c_str());
}

bool ReplacementFile::fail() {
    error_ = std::generic_category().message(errno);
    return false;
}

bool ReplacementFile::replaceWith(std::string_view content, Sync sync) {
    if (!file_.IsOpen()) return false;
    struct stat old {};
    if (::lstat(target_.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode)) {
            error_ = S_ISDIR(old.st_mode) ? std::generic_category().message(EISDIR) : "Not a regular file";
            return false;
        }
        const bool given = ::fchown(file_.Number(), old.st_uid, old.st_gid) == 0;
        // What is another person's is not opened to the group that happens to be ours. Where this is refused, the file
        // stays its owner's alone, or has the rights that its volume gives to all: that loses nothing.
        ::fchmod(file_.Number(), old.st_mode & (given ? 07777 : 0700));
    }
    if (!file_.Write(content) || (sync == Sync::yes && !file_.Sync())) return fail();
    if (::rename(path_.c_str(), target_.c_str()) != 0) return fail();
    file_.Close();
    // A name reaches the disk with its folder. The file is in its place: a folder that cannot be synced undoes nothing.
    if (sync == Sync::yes) base::Descriptor::Open(folder_.c_str(), O_RDONLY | O_DIRECTORY).Sync();
    return true;
}

}  // namespace marrowbeck::tools
