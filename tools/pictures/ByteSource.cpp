#include "tools/pictures/ByteSource.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace marrowbeck::tools {

ByteSource::ByteSource(int descriptor) : descriptor_(descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0) size_ = static_cast<std::uint64_t>(status.st_size);
}

ByteSource::ByteSource(std::span<const std::uint8_t> memory) : size_(memory.size()), window_(memory) {}

std::span<const std::uint8_t> ByteSource::at(std::uint64_t offset, std::size_t count) {
    if (offset > size_ || count > size_ - offset) throw OutOfBytes();
    const bool inWindow = offset >= windowStart_ && offset - windowStart_ <= window_.size() &&
                          count <= window_.size() - (offset - windowStart_);
    if (!inWindow) {
        if (descriptor_ < 0 || count > windowSize) throw OutOfBytes();
        ssize_t got = 0;
        do {
            got = ::pread(descriptor_, buffer_.data(), buffer_.size(), static_cast<off_t>(offset));
        } while (got < 0 && errno == EINTR);
        windowStart_ = offset;
        window_ = std::span(buffer_).first(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (count > window_.size()) throw OutOfBytes();  // the file has become shorter, or its disk fails
    }
    return window_.subspan(static_cast<std::size_t>(offset - windowStart_), count);
}

bool ByteSource::matches(std::uint64_t offset, std::string_view bytes) {
    if (offset > size_ || bytes.size() > size_ - offset) return false;
    const auto found = at(offset, bytes.size());
    return std::equal(bytes.begin(), bytes.end(), found.begin(),
                      [](char left, std::uint8_t right) { return static_cast<std::uint8_t>(left) == right; });
}

std::uint64_t ByteSource::number(std::uint64_t offset, std::size_t count, ByteOrder order) {
    const auto bytes = at(offset, count);
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value = value << 8 | bytes[order == ByteOrder::bigEndian ? i : count - 1 - i];
    return value;
}

}  // namespace marrowbeck::tools
