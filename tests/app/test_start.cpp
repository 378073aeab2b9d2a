// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>

#include <QApplication>
#include <QWidget>

#include "net/updateWindow.h"
#include "tests/app/AppTest.h"
#include "tests/support/ScriptedServer.h"

namespace marrowbeck::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class Start : public AppTest {
  protected:
    static std::vector<std::string> windowsOnShow() {
        std::vector<std::string> titles;
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible()) titles.push_back(widget->windowTitle().toStdString());
        }
        return titles;
    }
};

TEST_F(Start, TheFirstOneLooksForANewerVersionBeforeTheWindowOpens) {
    std::vector<std::string> meanwhile;
    const std::string version = App::Current()->ShortVersion().ToStd();
    const std::string feed = "standalone <CurrentVersion>" + version + "</CurrentVersion>";
    ScriptedServer server({[&](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        QMetaObject::invokeMethod(
            qApp, [&] { meanwhile = windowsOnShow(); }, Qt::BlockingQueuedConnection);
        peer.Send("HTTP/1.0 200 OK\r\n\r\n" + feed);
    }});
    theSite = {server.Host(), ""};
    App::Current()->Event_Open();
    EXPECT_THAT(meanwhile, ElementsAre("Update"));
    EXPECT_THAT(windowsOnShow(), ElementsAre("Marrowbeck"));
    EXPECT_THAT(server.Requests(), ElementsAre(StartsWith("GET /photography/marrowbeck/updates/marrowbeck.xml ")));
    EXPECT_THAT(messages, IsEmpty());
    EXPECT_FALSE(Global<Window1>()->UpdateCheckbox->Value());
}

TEST_F(Start, NoConnectionIsMadeWhenTheCheckIsOff) {
    ScriptedServer server({ScriptedServer::Answering("")});
    theSite = {server.Host(), ""};
    remember("<key>autoupdate</key>\n<false/>\n");
    App::Current()->Event_Open();
    EXPECT_THAT(windowsOnShow(), ElementsAre("Marrowbeck"));
    EXPECT_THAT(server.Requests(), IsEmpty());
    EXPECT_EQ(App::Current()->ImageDict->Count(), 6);
    // The listener takes one more connection: ours.
    const Ref<HTTPSocket> socket = New<HTTPSocket>();
    socket->Get("http://" + server.Host() + "/", 5);
    EXPECT_THAT(server.Requests(), SizeIs(1));
}

TEST_F(Start, AFolderThatIsMissingIsToldByName) {
    theSite = {};
    framework::internal::RaiseOpen();
    framework::internal::RaiseOpenDocuments({folder + "/missing"});
    EXPECT_THAT(messages, ElementsAre(StartsWith(folder + "/missing does not exist.")));
    EXPECT_EQ(App::Current()->gFolder, String());
}

TEST_F(Start, AnEndBeforeThePreferencesAreReadWritesNone) {
    App::Current()->Event_Close();
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace marrowbeck::test
