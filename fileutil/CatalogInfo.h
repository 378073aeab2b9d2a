// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/stat.h>

#include <string>
#include <utility>
#include <vector>

#include "framework/core/core.h"

namespace marrowbeck {

/// What a folder says of a file beside its content: mode, owner, access time and extended attributes, access control
/// lists among them. Not the modification time, which belongs to the content.
class CatalogInfo : public Object {
  public:
    /// The information of what is at `path`; Nil with errno set when it cannot be had.
    static Ref<CatalogInfo> Read(const String& path);

    /// Gives it to the file at `path`, as far as the system allows: only a privileged process gives files away, and
    /// not every file system keeps all of it.
    void ApplyTo(const String& path) const;

  private:
    struct stat status_ {};
    std::vector<std::pair<std::string, std::string>> attributes_;
};

}  // namespace marrowbeck
