#include "framework/core/BinaryStream.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

namespace framework {

BinaryStream::BinaryStream(Descriptor file) : file_(std::move(file)) {}

String BinaryStream::Read(int count, TextEncoding encoding) {
    // The count comes from a caller who may ask for far more than there is.
    const std::uint64_t left = Length() - std::min(position_, Length());
    std::string bytes(std::min(static_cast<std::uint64_t>(std::max(count, 0)), left), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got =
            ::pread(file_.Number(), bytes.data() + size, bytes.size() - size, static_cast<off_t>(position_));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) failed_ = true;
        if (got <= 0) break;
        size += static_cast<std::size_t>(got);
        position_ += static_cast<std::uint64_t>(got);
    }
    return String(std::string_view(bytes).substr(0, size), encoding);
}

void BinaryStream::Write(const String& bytes) {
    std::string_view rest = bytes.Bytes();
    while (!rest.empty()) {
        const ssize_t put = ::pwrite(file_.Number(), rest.data(), rest.size(), static_cast<off_t>(position_));
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) {
            failed_ = true;
            return;
        }
        rest.remove_prefix(static_cast<std::size_t>(put));
        position_ += static_cast<std::uint64_t>(put);
    }
}

std::uint64_t BinaryStream::Length() const {
    struct stat facts;
    return ::fstat(file_.Number(), &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

bool BinaryStream::Close() {
    if (!file_.Close()) failed_ = true;
    return !failed_;
}

}  // namespace framework
