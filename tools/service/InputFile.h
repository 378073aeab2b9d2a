#pragma once

#include <string>

namespace marrowbeck::tools {

/// A regular file open for reading, closed when the object goes.
class InputFile {
  public:
    /// Opens `path`; links are followed. After a failure `isOpen()` is false and
    /// `error()` says why. A pipe or a device is refused without waiting for it.
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }
    const std::string& error() const { return error_; }

    /// The path as it was given.
    const std::string& path() const { return path_; }

    /// The part of the path behind its last slash.
    std::string name() const;

    /// Another absolute path of this open file, made of plain characters whatever
    /// the file is called. It goes on naming this file when another takes its place.
    std::string plainPath() const;

    /// Up to `count` bytes from the beginning; fewer when the file is shorter or fails.
    std::string head(size_t count) const;

  private:
    std::string path_;
    std::string error_;
    int descriptor_ = -1;
};

}  // namespace marrowbeck::tools
