// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "base/ToolResult.h"

namespace marrowbeck::tools {

using base::Arguments;
using base::ToolResult;

using base::exitFailure;
using base::exitSuccess;
using base::exitUsage;

}  // namespace marrowbeck::tools
