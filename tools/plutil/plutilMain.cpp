// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/plutil.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    // Room for the largest document that passes the checks, as a tree and as text at once.
    marrowbeck::tools::limitProcess(6ULL << 30, 120);
    return marrowbeck::tools::runTool(marrowbeck::tools::plutil, argumentCount, arguments);
}
