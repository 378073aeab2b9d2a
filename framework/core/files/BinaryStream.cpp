// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/BinaryStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include "framework/core/objects/System.h"

namespace framework {

namespace {

/// In bytes. So much is written before the disk is told to begin with it, so that little is left for Sync to wait for.
constexpr std::uint64_t kSentAhead = std::uint64_t{4} * 1024 * 1024;

bool isOrdinary(const base::Descriptor& file) {
    struct stat facts;
    return ::fstat(file.Number(), &facts) == 0 && S_ISREG(facts.st_mode);
}

}  // namespace

BinaryStream::BinaryStream(base::Descriptor file) : file_(std::move(file)), ordinary_(isOrdinary(file_)) {}

String BinaryStream::Read(int count, TextEncoding encoding) {
    // The count comes from a caller who may ask for far more than there is.
    const std::uint64_t left = Length() - std::min(position_, Length());
    std::string bytes(std::min(static_cast<std::uint64_t>(std::max(count, 0)), left), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got =
            ::pread(file_.Number(), bytes.data() + size, bytes.size() - size, static_cast<off_t>(position_));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(errno);
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
            fail(put < 0 ? errno : EIO);
            return;
        }
        rest.remove_prefix(static_cast<std::size_t>(put));
        position_ += static_cast<std::uint64_t>(put);
        unsent_ += static_cast<std::uint64_t>(put);
    }
    if (unsent_ < kSentAhead) return;
    unsent_ = 0;
    ::sync_file_range(file_.Number(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

std::uint64_t BinaryStream::Length() const {
    struct stat facts;
    return ::fstat(file_.Number(), &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

bool BinaryStream::Sync() {
    if (!file_.Sync()) fail(errno);
    return !Failed();
}

bool BinaryStream::Close() {
    if (!file_.Close()) fail(errno);
    return !Failed();
}

void BinaryStream::fail(int error) {
    if (!Failed()) error_ = error;
}

String BinaryStream::FailureReason() const {
    return Failed() ? System::FileErrorReason(error_) : String();
}

}  // namespace framework
