#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string_view>

namespace marrowbeck::tools {

/// Thrown by `ByteSource` when a read leaves the file, as it does in one that is
/// cut short or lies about its own offsets.
class OutOfBytes : public std::runtime_error {
  public:
    OutOfBytes() : std::runtime_error("The file ends too early") {}
};

enum class ByteOrder { bigEndian, littleEndian };

/// Numbers at any place of a file or of a block of memory. Every read is checked
/// against the end, and offsets are 64 bits wide, so that sums of the 32-bit
/// numbers that files hold cannot wrap. Small reads share a window of some
/// kilobytes: walking through a file costs few system calls, and no memory.
class ByteSource {
  public:
    /// Reads from an open file, which must outlive the source.
    explicit ByteSource(int descriptor);

    /// Reads from memory, which must outlive the source.
    explicit ByteSource(std::span<const std::uint8_t> memory);

    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    std::uint64_t size() const { return size_; }

    std::uint8_t u8(std::uint64_t offset) { return at(offset, 1)[0]; }
    std::uint16_t u16(std::uint64_t offset, ByteOrder order) {
        return static_cast<std::uint16_t>(number(offset, 2, order));
    }
    std::uint32_t u24(std::uint64_t offset, ByteOrder order) {
        return static_cast<std::uint32_t>(number(offset, 3, order));
    }
    std::uint32_t u32(std::uint64_t offset, ByteOrder order) {
        return static_cast<std::uint32_t>(number(offset, 4, order));
    }
    std::uint64_t u64(std::uint64_t offset, ByteOrder order) { return number(offset, 8, order); }

    /// True when the bytes at `offset` are these; false when the file ends before.
    bool matches(std::uint64_t offset, std::string_view bytes);

    /// `count` bytes at `offset`, at most `windowSize`; valid until the next read.
    std::span<const std::uint8_t> at(std::uint64_t offset, std::size_t count);

    static constexpr std::size_t windowSize = 4096;

  private:
    std::uint64_t number(std::uint64_t offset, std::size_t count, ByteOrder order);

    int descriptor_ = -1;
    std::uint64_t size_ = 0;
    std::uint64_t windowStart_ = 0;
    std::span<const std::uint8_t> window_;
    std::array<std::uint8_t, windowSize> buffer_{};
};

}  // namespace marrowbeck::tools
