// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/plutil.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::plutil, argumentCount, arguments);
}
