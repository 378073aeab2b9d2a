// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QApplication>

#include "framework/core/desktop/Alert.h"
#include "framework/ui/dialog/AlertBox.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    framework::internal::SetAlertPresenter(framework::internal::PresentAlert);
    return RUN_ALL_TESTS();
}
