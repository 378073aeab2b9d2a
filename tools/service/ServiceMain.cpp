// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ServiceMain.h"

#include <unistd.h>

#include <string_view>

#include "tools/service/Service.h"
#include "tools/service/ToolMain.h"

namespace marrowbeck::tools {

int runServiceTool(Tool& tool, int argumentCount, char** arguments) noexcept {
    const bool staysOpen = argumentCount == 2 && std::string_view(arguments[1]) == "-stay_open";
    const auto run = [&](const Arguments& words) {
        return staysOpen ? ToolResult{{}, {}, serve(tool, STDIN_FILENO, STDOUT_FILENO)} : runOnce(tool, words);
    };
    return runTool(run, argumentCount, arguments);
}

}  // namespace marrowbeck::tools
