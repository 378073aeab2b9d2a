// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace base {

/// Which file, and in which state: two equal ones have the same content.
struct FileIdentity {
    /// Device, inode, size, and the times of the last change of content and of anything, in seconds and nanoseconds.
    std::array<std::uint64_t, 7> numbers{};

    FileIdentity() = default;
    explicit FileIdentity(const struct stat& status)
        : numbers{number(status.st_dev),         number(status.st_ino),          number(status.st_size),
                  number(status.st_mtim.tv_sec), number(status.st_mtim.tv_nsec), number(status.st_ctim.tv_sec),
                  number(status.st_ctim.tv_nsec)} {}

    /// Of the file that a path leads to now; nothing when there is none.
    static std::optional<FileIdentity> of(const std::string& path) {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0 ? std::optional(FileIdentity(status)) : std::nullopt;
    }

    /// The size in bytes.
    std::uint64_t Length() const { return numbers[2]; }

    bool operator==(const FileIdentity&) const = default;

    /// The same file, in whatever state.
    bool isSameFile(const FileIdentity& other) const {
        return numbers[0] == other.numbers[0] && numbers[1] == other.numbers[1];
    }

  private:
    template <class Number>
    static std::uint64_t number(Number value) {
        return static_cast<std::uint64_t>(value);
    }
};

}  // namespace base
