// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>

// Timers, sockets and threads live by an event loop; the tests run it as they need.
int main(int argc, char** argv) {
    // The toolkit's own loop is stricter than the desktop's, which the tests of the windows have.
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
