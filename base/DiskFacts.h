// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace base {

// What the disk tells of a path. Each call here asks it, and waits for as long as it takes.

/// What stands at a path, by the letter that stands for it in texts.
enum class PathKind : char {
    unknown = '?',  ///< not asked, or not answered
    missing = '-',
    file = 'f',
    folder = 'd',
    linkToFile = 'r',
    link = 'l',     ///< that leads to anything else, or nowhere
    anyLink = '@',  ///< told by a folder, which does not know where its links lead
    other = 'o',
};

PathKind kindAt(const char* path);

struct PathFacts {
    PathKind kind = PathKind::missing;
    /// In bytes; of a link, that of what it leads to, if that is there.
    std::uint64_t length = 0;
    /// Of the path itself; all 0 where there is nothing.
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

PathFacts factsAt(const char* path);

/// The facts as text, and from it; a text that makes no sense tells of nothing that is there.
std::string textOf(const PathFacts& facts);
PathFacts factsFrom(std::string_view text);

struct FolderChild {
    std::string name;
    /// As far as the folder itself tells it: `anyLink` for a link, and `unknown` on some file systems.
    PathKind kind = PathKind::unknown;
};

struct FolderChildren {
    std::vector<FolderChild> list;
    /// Why there may be more of them, by the system's number; 0 where these are all.
    int failure = 0;
};

/// The direct children of a folder, hidden ones too, sorted by the bytes of their names. `step` is called again and
/// again meanwhile, at least once for each child.
FolderChildren childrenOf(const char* folder, const std::function<void()>& step);

/// A text that goes with a file, an extended attribute of one line; empty where there is none.
std::string attributeAt(const char* path, const char* name);
/// The names of those that hold the old codes of type and creator.
inline constexpr const char* typeAttribute = "user.mac.type";
inline constexpr const char* creatorAttribute = "user.mac.creator";

}  // namespace base
