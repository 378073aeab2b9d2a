// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/stat.h>

#include <string>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// A regular file open for reading, closed when the object goes.
class InputFile {
  public:
    /// Opens `path`; links are followed. After a failure `isOpen()` is false and
    /// `error()` says why. A pipe or a device is refused without waiting for it.
    explicit InputFile(const std::string& path);

    bool isOpen() const { return file_.IsOpen(); }
    int descriptor() const { return file_.Number(); }
    const std::string& error() const { return error_; }

    /// Whether the file is there, but the system does not let us read it.
    bool isForbidden() const { return forbidden_; }

    /// The path as it was given.
    const std::string& path() const { return path_; }

    /// What the system says of the open file.
    const struct stat& status() const { return status_; }

    /// Returns once the first bytes, as many as nearly every picture tells of itself in, are in memory, read at one go.
    void fetchHead() const;

    /// Up to `count` bytes from the beginning; fewer when the file is shorter or fails.
    std::string head(size_t count) const;

  private:
    std::string path_;
    std::string error_;
    struct stat status_ {};
    bool forbidden_ = false;
    base::Descriptor file_;
};

/// The part of a path behind its last slash.
std::string nameOf(const std::string& path);

}  // namespace marrowbeck::tools
