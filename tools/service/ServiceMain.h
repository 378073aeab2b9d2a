// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// `runTool` for a tool of two halves, which with the one argument `-stay_open` answers requests from standard input
/// until that ends.
int runServiceTool(Tool& tool, int argumentCount, char** arguments) noexcept;

}  // namespace marrowbeck::tools
