// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ServiceMain.h"
#include "tools/sips/sips.h"

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::Sips tool;
    return marrowbeck::tools::runServiceTool(tool, argumentCount, arguments);
}
