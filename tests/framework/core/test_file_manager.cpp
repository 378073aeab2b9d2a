#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "framework/core/FileManager.h"
#include "tests/support/EventLoop.h"
#include "tests/support/PrivateBus.h"

namespace framework {
namespace {

using marrowbeck::test::PrivateBus;
using marrowbeck::test::RunUntilThere;

/// A file manager that notes what it is to show, or refuses everything.
class TestFileManager : public QDBusVirtualObject {
  public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (refuses) {
            connection.send(message.createErrorReply(QDBusError::Failed, "no"));
        } else {
            shown = message.arguments().first().toStringList();
            connection.send(message.createReply());
        }
        return true;
    }

    QStringList shown;
    bool refuses = false;
};

TEST(FileManager, RevealsByTheFileManagerElseOpensTheFolder) {
    const PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    TestFileManager manager;
    QDBusConnection connection = QDBusConnection::sessionBus();
    ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/FileManager1", &manager));
    ASSERT_TRUE(connection.registerService("org.freedesktop.FileManager1"));

    const std::string home = std::getenv("HOME");
    const std::string path = home + "/one, two 50%.jpg";
    std::ofstream(path) << "x";
    EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(path))));
    EXPECT_EQ(manager.shown, QStringList(QString::fromStdString("file://" + home + "/one%2C%20two%2050%25.jpg")))
        << manager.shown.join(' ').toStdString();

    // Without a file manager and a portal that help, the folder is opened by whatever opens folders.
    manager.refuses = true;
    std::ofstream(home + "/xdg-open") << "#!/bin/sh\necho \"$1\" > " << home << "/part\nmv " << home << "/part " << home
                                      << "/opened\n";
    std::filesystem::permissions(home + "/xdg-open", std::filesystem::perms::owner_all);
    setenv("PATH", (home + ":" + std::getenv("PATH")).c_str(), 1);
    EXPECT_TRUE(RevealInFileManager(New<FolderItem>(String(path))));
    EXPECT_TRUE(RunUntilThere(home + "/opened"));

    setenv("PATH", "/nowhere", 1);
    EXPECT_FALSE(RevealInFileManager(New<FolderItem>(String(path))));
}

}  // namespace
}  // namespace framework
