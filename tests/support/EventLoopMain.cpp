// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>

// Timers, sockets and threads live by an event loop; the tests run it as they need.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
