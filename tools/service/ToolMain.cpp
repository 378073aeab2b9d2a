#include "tools/service/ToolMain.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>

#include "tools/service/Service.h"
#include "tools/service/WriteAll.h"

namespace marrowbeck::tools {

int runTool(const std::function<ToolResult(const Arguments&)>& tool, int argumentCount, char** arguments) noexcept {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const ToolResult result = tool(Arguments(arguments + std::min(argumentCount, 1), arguments + argumentCount));
        writeAll(STDERR_FILENO, result.error);
        if (!writeAll(STDOUT_FILENO, result.output)) return exitFailure;
        return result.status;
    } catch (const std::exception& failure) {
        writeAll(STDERR_FILENO, failure.what());
        writeAll(STDERR_FILENO, "\n");
        return exitFailure;
    }
}

int runTool(const Tool& tool, int argumentCount, char** arguments) noexcept {
    const bool staysOpen = argumentCount == 2 && std::string_view(arguments[1]) == "-stay_open";
    const auto run = [&](const Arguments& words) {
        return staysOpen ? ToolResult{{}, {}, serve(tool, STDIN_FILENO, STDOUT_FILENO)} : runOnce(tool, words);
    };
    return runTool(run, argumentCount, arguments);
}

}  // namespace marrowbeck::tools
