#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <tuple>

namespace marrowbeck::tools {

/// Which file, and in which state: two equal ones have the same content.
struct FileIdentity {
    std::tuple<dev_t, ino_t, off_t, time_t, long, time_t, long> values;

    explicit FileIdentity(const struct stat& status)
        : values(status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
                 status.st_ctim.tv_sec, status.st_ctim.tv_nsec) {}

    /// Of the file that a path leads to now; nothing when there is none.
    static std::optional<FileIdentity> of(const std::string& path) {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0 ? std::optional(FileIdentity(status)) : std::nullopt;
    }

    bool operator==(const FileIdentity&) const = default;
};

}  // namespace marrowbeck::tools
