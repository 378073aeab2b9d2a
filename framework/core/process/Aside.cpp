// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/Aside.h"

#include <chrono>
#include <utility>

#include "framework/core/process/ResidentTool.h"
#include "framework/core/process/Shell.h"

namespace framework::internal {

std::optional<Aside::Answer> Aside::Ask(const base::Arguments& words, int milliseconds) {
    ResidentTool* const tool = ResidentToolCalled("look");
    if (!tool) return std::nullopt;
    const auto end = ResidentTool::Clock::now() + std::chrono::milliseconds(milliseconds);
    std::optional<ResidentTool::Result> result = tool->Ask(words, end);
    if (!result) return std::nullopt;
    return Answer{result->status != ResidentTool::kUnanswered, std::move(result->output)};
}

}  // namespace framework::internal
