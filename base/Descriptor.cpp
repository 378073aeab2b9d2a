// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include "base/WriteAll.h"

namespace base {

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor Descriptor::Open(const char* path, int flags, mode_t mode) {
    Descriptor file;
    do {
        file.number_ = ::open(path, flags | O_CLOEXEC, mode);
    } while (file.number_ < 0 && errno == EINTR);
    return file;
}

Descriptor Descriptor::OpenForReading(const char* path) {
    Descriptor file = Open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat facts;
    if (file.IsOpen() && (::fstat(file.number_, &facts) != 0 || S_ISDIR(facts.st_mode))) file.Close();
    return file;
}

ssize_t Descriptor::Read(char* bytes, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(number_, bytes, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

bool Descriptor::Write(std::string_view bytes) {
    return writeAll(number_, bytes);
}

bool Descriptor::Sync() {
    int result = 0;
    do {
        result = ::fsync(number_);
    } while (result != 0 && errno == EINTR);
    if (result == 0) return true;
    // A file system that has no such call has lost nothing: what can be waited for was written. Bytes that were lost
    // are told by other numbers.
    constexpr int kRefusals[] = {EINVAL, ENOSYS, EOPNOTSUPP, EPERM};
    return std::find(std::begin(kRefusals), std::end(kRefusals), errno) != std::end(kRefusals);
}

bool Descriptor::Close() {
    const int number = std::exchange(number_, -1);
    // An interrupted close has closed all the same; trying again could close a file that another just opened.
    return number < 0 || ::close(number) == 0 || errno == EINTR;
}

}  // namespace base
