// SPDX-License-Identifier: GPL-2.0-or-later
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <string_view>

#include "tools/look/look.h"
#include "tools/service/ToolMain.h"

using namespace marrowbeck::tools;

int main(int argumentCount, char** arguments) {
    if (argumentCount == 2 && std::string_view(arguments[1]) == "-stay_open") {
        std::signal(SIGPIPE, SIG_IGN);
        serveLooks(STDIN_FILENO, STDOUT_FILENO);
    }
    return runTool([](const Arguments& words) { return look(words); }, argumentCount, arguments);
}
