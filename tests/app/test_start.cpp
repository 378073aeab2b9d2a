// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>

#include <QApplication>
#include <QMessageBox>
#include <QWidget>

#include "framework/ui/dialog/AlertBox.h"
#include "net/updateWindow.h"
#include "tests/app/AppTest.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ScriptedServer.h"

namespace marrowbeck::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
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

TEST_F(Start, AFloodOfWhatIsNoFolderIsToldByOneBoxAtATime) {
    remember("<key>Sub</key>\n<false/>\n");
    framework::internal::RaiseOpen();
    framework::internal::SetAlertPresenter(framework::internal::PresentAlert);
    const auto boxes = [] {
        std::vector<QMessageBox*> open;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* const box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) open.push_back(box);
        }
        return open;
    };
    for (int i = 0; i < 100; ++i) {
        framework::internal::RaiseOpenDocuments({file, file, folder});
        framework::internal::RaiseOpenDocuments({folder + "/missing" + std::to_string(i)});
    }
    RunUntil([&] { return App::Current()->gFolder != String() || boxes().size() > 1; });
    ASSERT_THAT(boxes(), SizeIs(1)) << "and the folder is opened meanwhile";
    EXPECT_EQ(boxes().front()->text().toStdString(), Window1::kNotAFolder);
    boxes().front()->accept();
    ASSERT_TRUE(RunUntil([&] { return boxes().size() == 1 && boxes().front()->text() != Window1::kNotAFolder; }));
    EXPECT_THAT(boxes().front()->text().toStdString(),
                AllOf(StartsWith(folder + "/missing0 does not exist."), HasSubstr("\n" + folder + "/missing7 does"),
                      EndsWith("\nAnd so it is with 92 more.")));
    boxes().front()->accept();
    ASSERT_TRUE(RunUntil([&] { return boxes().empty(); }));
    framework::internal::RaiseOpenDocuments({"/gone"});
    ASSERT_TRUE(RunUntil([&] { return !boxes().empty(); }));
    EXPECT_THAT(boxes().front()->text().toStdString(), StartsWith("/gone does not exist.")) << "nothing else waited";
}

TEST_F(Start, AnEndBeforeThePreferencesAreReadWritesNone) {
    App::Current()->Event_Close();
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace marrowbeck::test
