// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace marrowbeck::tools {

/// Visits every regular file below `folder` in the byte order of the paths, and
/// calls `visit` with the path and with the name that ends it; both last for the
/// call only. Hidden files and folders (a leading dot) are left out, links are
/// not followed, and subfolders that cannot be read are skipped, `skipped` being
/// called with path and `errno`, as is what lies so deep that no path can name it. What
/// the system does not let us look at is visited as a file. `folder` itself may be a link
/// or hidden; the paths begin with it as it stands, without its trailing slashes.
///
/// Holds one file open at a time and takes memory only for the folders on the
/// way down, so that deep nesting does no harm.
///
/// Returns 0, or the `errno` that says why `folder` itself cannot be read.
int walkFolder(const std::string& folder,
               const std::function<void(const std::string& path, std::string_view name)>& visit,
               const std::function<void(const std::string& path, int failure)>& skipped);

}  // namespace marrowbeck::tools
