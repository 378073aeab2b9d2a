// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tools/mdls/mdls.h"
#include "tools/service/Service.h"
#include "tools/sips/sips.h"

namespace marrowbeck::tools {

/// The tools as functions, each call with a confined reader of its own. What readers load is loaded here once.
template <class Tool>
ToolResult runWarm(const Arguments& arguments) {
    static Tool tool;
    static const bool warm = (tool.warmUp(), true);
    static_cast<void>(warm);
    return runOnce(tool, arguments);
}

inline ToolResult mdls(const Arguments& arguments) {
    return runWarm<Mdls>(arguments);
}

inline ToolResult sips(const Arguments& arguments) {
    return runWarm<Sips>(arguments);
}

}  // namespace marrowbeck::tools
