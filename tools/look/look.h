// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/look/SideBySide.h"
#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// What the disk tells of files and folders, for who must not wait for it. Each answer is ended by a NUL:
///
/// - `list FOLDER`: the system's number for why the folder could not be read whole, 0 where it could; then, for each
///   direct child, hidden ones too, sorted by the bytes of the names, a letter and the name. The letters are those of
///   base::PathKind, as far as the folder itself tells them.
/// - `kinds FOLDER NAME...`: the letter of each child, that of `unknown` for one that the disk does not answer for.
/// - `at PATH...`: base::textOf the facts of each.
/// - `access RIGHTS PATH...`: the system's number for why each may not be used so, 0 where it may. RIGHTS is some of
/// the
///   letters r, w and x, or f where to be there is enough.
/// - `codes FOLDER NAME...`: for each child the codes of type and creator, each ended by a NUL.
/// - `clean PATH`, `follow PATH`: base::cleanPath of it, and base::followedLink of that.
/// - `folders PATH...`: each with the link at its end followed, empty where that leads to no folder.
///
/// What can be asked side by side is; the caller's thread waits. Arguments that make no sense are refused. Paths are
/// absolute.
ToolResult look(const Arguments& arguments, const Dropped& dropped = nobodyDrops());

/// Serves requests in frames (see base/Frames.h) from `input`, many at a time, each answered on `output` once the disk
/// has answered it. Never returns: at the end of the input the process is over, whatever is still asked.
[[noreturn]] void serveLooks(int input, int output);

}  // namespace marrowbeck::tools
