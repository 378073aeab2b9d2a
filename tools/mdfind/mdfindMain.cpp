// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/mdfind.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::mdfind, argumentCount, arguments);
}
