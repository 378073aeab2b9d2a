// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/mdls.h"
#include "tools/service/ServiceMain.h"

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::Mdls tool;
    return marrowbeck::tools::runServiceTool(tool, argumentCount, arguments);
}
