// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

namespace base {

/// The words that follow a tool's name, as bytes.
using Arguments = std::vector<std::string>;

/// Exit statuses of the tools.
enum ExitStatus : int {
    exitSuccess = 0,
    exitFailure = 1,  ///< a file or folder could not be read
    exitUsage = 2,    ///< the arguments were refused
};

/// What a tool leaves behind: its standard output as bytes, its standard error
/// as text that ends with a line end, and its exit status.
struct ToolResult {
    std::string output;
    std::string error;
    int status = exitSuccess;
};

}  // namespace base
