// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QSysInfo>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/desktop/DocumentService.h"
#include "framework/core/desktop/FileManager.h"
#include "framework/core/process/ActivationToken.h"
#include "tests/support/EventLoop.h"
#include "tests/support/FileManager.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace framework {
namespace {

using marrowbeck::test::PrivateBus;
using marrowbeck::test::RunUntil;
using marrowbeck::test::RunUntilThere;

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

    // URIs as desktops write them. A link to a folder is a folder.
    std::filesystem::create_directory_symlink(folder, folder + "/link");
    std::vector<std::string> messages;
    internal::SetAlertPresenter([&messages](const String& text) { messages.push_back(text.ToStd()); });
    auto call =
        QDBusMessage::createMethodCall(kName, "/com/example/document_service", "org.freedesktop.Application", "Open");
    const QString path = QString::fromStdString(folder).replace('%', "%25");
    call << QStringList{"file://" + path + "/link", "file:" + path, "file://" + QSysInfo::machineHostName() + path,
                        "file://elsewhere.example/tmp"}
         << QVariantMap();
    application->opened.clear();
    QDBusConnection::sessionBus().asyncCall(call);
    EXPECT_TRUE(RunUntil([&messages] { return !messages.empty(); }));
    EXPECT_EQ(application->opened, std::vector<std::string>(3, folder));
    EXPECT_EQ(messages, std::vector<std::string>{"file://elsewhere.example/tmp is no folder of this computer."});
    internal::SetAlertPresenter({});
}

TEST(DocumentService, WithoutABusTheProcessWorksAlone) {
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(secondStart({"/tmp"}), "alone");
}

/// A desktop on which these programs open folders, the first one by a person's choice. Each writes down what it opens
/// in a file of its name; the name is that of its executable.
void setUpDesktop(const std::string& home, const std::vector<std::string>& programs) {
    const std::string applications = home + "/share/applications";
    std::filesystem::create_directories(applications);
    for (const std::string& name : programs) {
        std::ofstream(home + "/" + name) << "#!/bin/sh\necho \"$1 $DESKTOP_STARTUP_ID\" > " << home << "/part\nmv "
                                         << home << "/part " << home << "/opened-by-" << name << "\n";
        std::filesystem::permissions(home + "/" + name, std::filesystem::perms::owner_all);
        std::ofstream(applications + "/" + name + ".desktop")
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=" << home << "/" << name
            << " %f\nMimeType=inode/directory;\n";
    }
    std::ofstream(applications + "/mimeapps.list")
        << "[Default Applications]\ninode/directory=" << programs.front() << ".desktop\n[Added Associations]\n"
        << "inode/directory=" << programs.front() << ".desktop;" << programs.back() << ".desktop;\n";
    setenv("XDG_DATA_DIRS", (home + "/share").c_str(), 1);
}

TEST(FileManager, RevealsByTheFileManagerElseOpensTheFolder) {
    const PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    marrowbeck::test::FileManager manager;
    ASSERT_TRUE(manager.IsRunning());

    const std::string home = std::getenv("HOME");
    const std::string path = home + "/one, two 50%.jpg";
    std::ofstream(path) << "x";
    // Another file is asked for meanwhile, which is called the same but for its case. Each comes to the front by right
    // of the act that asked for it.
    int acts = 0;
    internal::SetActivationTokenMaker([&acts] { return String("act " + std::to_string(++acts)); });
    std::ofstream(home + "/ONE.jpg") << "x";
    manager.beforeAnswer = [&home] { EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(home + "/ONE.jpg")))); };
    EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(home + "/one.jpg"))));
    const QString url = "file://" + QString::fromStdString(home);
    EXPECT_EQ(manager.shown, QStringList({url + "/one.jpg", url + "/ONE.jpg"}));
    EXPECT_EQ(manager.tokens, QStringList({"act 1", "act 2"}));
    manager.shown.clear();
    EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(path))));
    EXPECT_EQ(manager.shown, QStringList(url + "/one%2C%20two%2050%25.jpg")) << manager.shown.join(' ').toStdString();

    // Without a file manager and a portal that help, the folder is opened: once however often that was asked for
    // meanwhile, and by another program than this one, which is set for folders here.
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").filename().string();
    setUpDesktop(home, {self, "other"});
    manager.refuses = true;
    manager.beforeAnswer = [&path] { EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(path)))); };
    EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(path))));
    EXPECT_EQ(manager.refused, 1);
    ASSERT_TRUE(RunUntilThere(home + "/opened-by-other"));
    EXPECT_EQ(readFile(home + "/opened-by-other"), home + " act 5\n");
    EXPECT_FALSE(std::filesystem::exists(home + "/opened-by-" + self));

    internal::SetActivationTokenMaker({});
    std::filesystem::remove(home + "/other");
    EXPECT_FALSE(RevealInFileManager(New<FolderItem>(String(path))));
}

}  // namespace
}  // namespace framework
