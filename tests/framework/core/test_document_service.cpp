// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QProcess>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "framework/core/desktop/Application.h"
#include "framework/core/desktop/DocumentService.h"
#include "tests/support/EventLoop.h"
#include "tests/support/PrivateBus.h"

namespace framework {
namespace {

using marrowbeck::test::PrivateBus;
using marrowbeck::test::RunUntil;

constexpr const char* kName = "com.example.document-service";

class OpeningApplication : public Application {
  public:
    void Event_OpenDocument(const Ref<FolderItem>& item) override { opened.push_back(item->AbsolutePath().ToStd()); }

    std::vector<std::string> opened;
};

/// Starts a second process of the program with `arguments` and gives what it says of its role.
std::string secondStart(const QStringList& arguments) {
    QProcess second;
    second.start(SECOND_START, QStringList(kName) + arguments);
    RunUntil([&second] { return second.state() == QProcess::NotRunning; });
    return second.readAllStandardOutput().toStdString();
}

TEST(DocumentService, TheFirstProcessOpensWhatLaterOnesWereGiven) {
    const PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    const auto application = New<OpeningApplication>();
    int activations = 0;
    const DocumentService service(kName, {}, [&activations] { ++activations; });
    ASSERT_EQ(service.GetRole(), DocumentService::Role::First);

    const std::string folder = std::string(std::getenv("HOME")) + "/a #1 50% caf\xC3\xA9:";
    std::filesystem::create_directory(folder);
    EXPECT_EQ(secondStart({QString::fromStdString(folder)}), "handed over");
    EXPECT_TRUE(application->opened.empty()) << "before the application is open, documents wait";
    internal::RaiseOpen();
    EXPECT_EQ(application->opened, std::vector<std::string>{folder});
    EXPECT_EQ(secondStart({}), "handed over");
    EXPECT_EQ(activations, 2);
    EXPECT_EQ(application->opened.size(), 1U);
}

TEST(DocumentService, WithoutABusTheProcessWorksAlone) {
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(secondStart({"/tmp"}), "alone");
}

}  // namespace
}  // namespace framework
