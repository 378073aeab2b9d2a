// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ToolMain.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>

#include "base/WriteAll.h"
#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

/// What the tool says to one who knows nothing of it.
ToolResult helpOf(const std::function<ToolResult(const Arguments&)>& tool) {
    return {tool({}).error, {}, exitSuccess};
}

ToolResult versionOf(const std::string& program) {
    return {nameOf(program) + " (Marrowbeck) " MARROWBECK_VERSION "\n", {}, exitSuccess};
}

}  // namespace

int runTool(const std::function<ToolResult(const Arguments&)>& tool, int argumentCount, char** arguments) noexcept {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const Arguments words(arguments + std::min(argumentCount, 1), arguments + argumentCount);
        const ToolResult result = words == Arguments{"--help"}      ? helpOf(tool)
                                  : words == Arguments{"--version"} ? versionOf(arguments[0])
                                                                    : tool(words);
        base::writeAll(STDERR_FILENO, result.error);
        if (!base::writeAll(STDOUT_FILENO, result.output)) return exitFailure;
        return result.status;
    } catch (const std::exception& failure) {
        base::writeAll(STDERR_FILENO, failure.what());
        base::writeAll(STDERR_FILENO, "\n");
        return exitFailure;
    }
}

}  // namespace marrowbeck::tools
