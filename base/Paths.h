// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace base {

/// The part of an absolute path behind its last slash; "/" for the root.
std::string_view lastPart(std::string_view path);
/// The part before that, "/" for what lies in the root; empty for the root.
std::string_view enclosingFolder(std::string_view path);
/// The path of what is called `name` in `folder`.
std::string joined(std::string_view folder, std::string_view name);

/// The path with the current folder before it where it is relative; nothing else is changed. Asks no disk. Empty when
/// no file can have the path.
std::string absolutePath(std::string_view path);

/// The path made absolute, without ".", ".." and needless slashes. What stands before a ".." is looked up on the disk,
/// so that the way up from a linked folder is the real one; where there is none, no disk is asked. Empty when no file
/// can have the path.
std::string cleanPath(std::string_view path);
/// Whether cleanPath asks the disk.
bool goesUp(std::string_view path);

/// Follows the link that an absolute path may name, and further links, to the end. The path of what is there, or would
/// be there when the last link leads nowhere; links that lead in a circle stay as they are.
std::string followedLink(std::string path);

}  // namespace base
