// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/DiskFacts.h"
#include "framework/core/process/Aside.h"

namespace framework::internal {

/// The codes of type and creator of a file.
struct FileCodes {
    std::string type;
    std::string creator;
};

/// How an item asks the disk: by itself, for the program's own files, which lie near, or aside (see Aside), where
/// nothing is held up. What is not answered in time is not there.
class Disk {
  public:
    static constexpr Disk Own() { return Disk(false); }
    static constexpr Disk Users() { return Disk(true); }

    base::PathFacts FactsAt(const std::string& path) const;
    base::PathKind KindAt(const std::string& path) const { return FactsAt(path).kind; }
    /// Why the path may not be used as `rights` of access(2) say, by the system's number; 0 where it may.
    int AccessFailure(const std::string& path, int rights) const;

    /// base::cleanPath.
    std::string Clean(std::string_view path) const;
    /// base::followedLink of that.
    std::string Follow(std::string_view path) const;

    /// Each path likewise followed, empty where that leads to no folder. All are asked at once.
    std::vector<std::string> FoldersOf(const std::vector<std::string>& paths,
                                       int milliseconds = Aside::kPatience) const;

    /// The children of a folder: the number of the failure, then a letter and a name for each, with a NUL behind each.
    /// The letters are as far as the folder tells them.
    std::string ChildrenOf(const std::string& folder) const;
    /// What children of a folder are; `unknown` where that was not answered in time.
    std::vector<base::PathKind> KindsOf(const std::string& folder, const std::vector<std::string>& names) const;
    std::vector<FileCodes> CodesOf(const std::string& folder, const std::vector<std::string>& names) const;

  private:
    explicit constexpr Disk(bool aside) : aside_(aside) {}

    bool aside_;
};

}  // namespace framework::internal
