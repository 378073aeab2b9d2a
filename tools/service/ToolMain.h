// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// Runs a tool as a process: hands it the arguments, writes what it answers and
/// returns the exit status. A reader that has closed the pipe gives `exitFailure`
/// without a word, since nobody is left to read one. Memory that runs out is a
/// failure too; no exception leaves. To `--help` the usage is told, by which
/// every tool refuses to be called without arguments, and to `--version` the version.
int runTool(const std::function<ToolResult(const Arguments&)>& tool, int argumentCount, char** arguments) noexcept;

}  // namespace marrowbeck::tools
