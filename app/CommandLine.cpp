// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/CommandLine.h"

#include <cstdio>
#include <string_view>

#include "app/Configuration.h"

namespace marrowbeck {
namespace {

constexpr const char* kHelp =
    "Usage: marrowbeck [FOLDER]\n"
    "\n"
    "Takes stock of the images in a folder: what they measure, what they weigh, and\n"
    "what is written in them. FOLDER is opened in the window; if Marrowbeck is running\n"
    "already, in the window that is open.\n"
    "\n"
    "  --help     tell this\n"
    "  --version  tell the version\n";

}  // namespace

std::optional<int> AnswerCommandLine(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") break;
        if (argument == "--help" || argument == "-h") {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (argument == "--version") {
            std::printf("marrowbeck %d.%d.%d\n", Configuration::kMajorVersion, Configuration::kMinorVersion,
                        Configuration::kBugVersion);
            return 0;
        }
    }
    return std::nullopt;
}

}  // namespace marrowbeck
