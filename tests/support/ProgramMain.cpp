// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "app/Startup.h"
#include "framework/framework.h"

// The program's own start, up to the point where its event loop would begin.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int refused = framework::RunFrameworkInitialization(argc, argv, {"Marrowbeck", "test"}, marrowbeck::_Startup);
    const int status = refused != 0 ? refused : RUN_ALL_TESTS();
    framework::internal::EndFramework();
    return status;
}
