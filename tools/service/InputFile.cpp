// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace marrowbeck::tools {

InputFile::InputFile(const std::string& path) : path_(path) {
    // Without O_NONBLOCK the opening of a pipe waits for a writer, perhaps for ever.
    file_ = base::Descriptor::Open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file_.IsOpen()) {
        forbidden_ = errno == EACCES || errno == EPERM;
        error_ = std::generic_category().message(errno);
        return;
    }
    if (fstat(file_.Number(), &status_) != 0) {
        error_ = std::generic_category().message(errno);
    } else if (S_ISDIR(status_.st_mode)) {
        error_ = std::generic_category().message(EISDIR);
    } else if (!S_ISREG(status_.st_mode)) {
        error_ = "Not a regular file";
    }
    if (!error_.empty()) file_.Close();
}

void InputFile::fetchHead() const {
    constexpr off_t headBytes = off_t{128} * 1024;
    const off_t end = std::min<off_t>(status_.st_size, headBytes);
    if (end == 0) return;
    char last = 0;
    const iovec place{&last, 1};
    // Whatever is in memory already is so at a tenth of the cost.
    if (::preadv2(descriptor(), &place, 1, end - 1, RWF_NOWAIT) == 1) return;
    ::posix_fadvise(descriptor(), 0, end, POSIX_FADV_WILLNEED);
    [[maybe_unused]] const ssize_t got = ::pread(descriptor(), &last, 1, end - 1);
}

std::string InputFile::head(size_t count) const {
    std::string bytes(count, '\0');
    size_t got = 0;
    while (got < count) {
        const ssize_t more = ::pread(descriptor(), bytes.data() + got, count - got, static_cast<off_t>(got));
        if (more < 0 && errno == EINTR) continue;
        if (more <= 0) break;
        got += static_cast<size_t>(more);
    }
    bytes.resize(got);
    return bytes;
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

}  // namespace marrowbeck::tools
