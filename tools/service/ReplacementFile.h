// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "base/Descriptor.h"
#include "tools/service/TargetPlace.h"

namespace marrowbeck::tools {

/// A file that is written beside another and then takes its place, so that
/// nobody ever sees half of it. Removed when it goes without having done so.
class ReplacementFile {
  public:
    /// For the file at `path`, which need not exist. Where that is a link, what it leads to is meant: see TargetPlace.
    explicit ReplacementFile(const std::string& path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    /// Whether the content reaches the disk before it takes its place, so that not
    /// even a machine that stops loses both the old and the new.
    enum class Sync { no, yes };

    /// Writes the whole content and renames, with, where allowed, mode and owner
    /// of the file replaced. What is no regular file is not replaced.
    /// False, with `error()`, leaves what was there as it was.
    /// A file that replaces none has the rights of any new one.
    bool replaceWith(std::string_view content, Sync sync = Sync::yes);
    const std::string& error() const { return error_; }

  private:
    bool fail();

    TargetPlace place_;
    std::string error_;
    std::string folder_;
    std::string target_;
    std::string path_;
    base::Descriptor file_;
};

}  // namespace marrowbeck::tools
