// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ReplacementFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>

namespace marrowbeck::tools {

namespace {

/// For a process with one thread.
mode_t usualRights() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

std::string withoutLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : path;
}

std::string folderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// A name reaches the disk with its folder. The file is in its place: a folder that cannot be synced undoes nothing.
void syncFolder(const std::string& path) {
    base::Descriptor::Open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY).Sync();
}

}  // namespace

ReplacementFile::ReplacementFile(const std::string& path)
    : target_(withoutLinks(path)), path_(folderOf(target_) + ".new-XXXXXX") {
    file_ = base::Descriptor(::mkostemp(path_.data(), O_CLOEXEC));
    if (!file_.IsOpen()) {
        fail();
    } else if (struct stat old{}; ::stat(target_.c_str(), &old) != 0) {
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
    if (::stat(target_.c_str(), &old) == 0) {
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
    if (sync == Sync::yes) syncFolder(target_);
    return true;
}

}  // namespace marrowbeck::tools
