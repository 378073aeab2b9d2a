// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <string_view>

#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/ui/dialog/AlertBox.h"
#include "framework/ui/drawing/WindowStyle.h"
#include "framework/ui/window/Global.h"
#include "tests/framework/ui/SampleProgram.h"

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == framework::testing::kSampleProgramFlag) {
        return framework::testing::RunSampleProgram(argc, argv);
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(new framework::native::WindowStyle);
    QApplication application(argc, argv);
    framework::internal::SetAlertPresenter(framework::internal::PresentAlert);
    framework::internal::SetQuitPreparation(framework::internal::CloseAllWindows);
    const int result = RUN_ALL_TESTS();
    framework::internal::CloseAllWindows();
    framework::internal::ForgetGlobals();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return result;
}
