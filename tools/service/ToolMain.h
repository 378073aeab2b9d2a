#pragma once

#include <functional>

#include "tools/service/Tool.h"
#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// Runs a tool as a process: hands it the arguments, writes what it answers and
/// returns the exit status. A reader that has closed the pipe gives `exitFailure`
/// without a word, since nobody is left to read one. Memory that runs out is a
/// failure too; no exception leaves.
int runTool(const std::function<ToolResult(const Arguments&)>& tool, int argumentCount, char** arguments) noexcept;

/// The same for a tool of two halves, which with the one argument `-stay_open` answers requests from standard
/// input until that ends.
int runTool(const Tool& tool, int argumentCount, char** arguments) noexcept;

}  // namespace marrowbeck::tools
