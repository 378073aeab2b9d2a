// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Startup.h"

int main(int argc, char** argv) {
    return marrowbeck::_Main(argc, argv);
}
