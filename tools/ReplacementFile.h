#pragma once

#include <string>
#include <string_view>

namespace marrowbeck::tools {

/// A file that is written beside another and then takes its place, so that
/// nobody ever sees half of it. Removed when it goes without having done so.
class ReplacementFile {
  public:
    /// For the file at `path`, which need not exist. Where that is a link, what it leads to is meant.
    explicit ReplacementFile(const std::string& path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    /// Writes the whole content and renames, with mode and, where allowed, owner
    /// of the file replaced. False, with `error()`, leaves that one as it was.
    bool replaceWith(std::string_view content);
    const std::string& error() const { return error_; }

  private:
    bool fail();

    std::string target_;
    std::string path_;
    std::string error_;
    int descriptor_ = -1;
};

}  // namespace marrowbeck::tools
