// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "net/updateWindow.h"
#include "tests/net/FullDisk.h"
#include "tests/support/RecordingOpener.h"
#include "tests/support/ScriptedServer.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

ScriptedServer::Part page(const std::string& content) {
    return ScriptedServer::Answering("HTTP/1.0 200 OK\r\nContent-Length: " + std::to_string(content.size()) +
                                     "\r\n\r\n" + content);
}

std::string feed(const std::string& version, const std::string& free = "Yes", const std::string& url = "") {
    return "<standalone/><Free>" + free + "</Free><CurrentVersion>" + version +
           "</CurrentVersion><Description>New \x96 & better</Description><DownloadURLOSX>" + url + "</DownloadURLOSX>";
}

/// A person who reads each box that comes, and presses the next of the buttons that were decided beforehand.
class Person {
  public:
    explicit Person(std::vector<std::string> answers) : answers_(std::move(answers)) {
        timer_.callOnTimeout([this] { look(); });
        timer_.start(5);
    }
    /// What the boxes said.
    std::vector<std::string> Read;

  private:
    void look() {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || answers_.empty()) return;
        const std::string answer = answers_.front();
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().toStdString() != answer) continue;
            answers_.erase(answers_.begin());
            Read.push_back(
                (box->text() + (box->informativeText().isEmpty() ? "" : "|") + box->informativeText()).toStdString());
            button->click();
            return;
        }
    }

    std::vector<std::string> answers_;
    QTimer timer_;
};

class UpdateWindow : public testing::Test {
  protected:
    UpdateWindow() { application->SetVersion(2, 1, 0); }

    /// Shows the window until it closes by itself; False when it did not.
    bool Show(const UpdateSite& site, bool automatic = true) {
        window = New<updateWindow>(site);
        window->automaticCheck = automatic;
        bool late = false;
        QTimer limit;
        limit.setSingleShot(true);
        limit.callOnTimeout([&] {
            late = true;
            window->Close();
        });
        limit.start(60'000);
        window->ShowModal();
        return !late;
    }
    bool Show(const ScriptedServer& server, bool automatic = true) { return Show({server.Host(), ""}, automatic); }

    static std::string OnDesktop(const std::string& name) {
        return std::string(std::getenv("HOME")) + "/Desktop/" + name;
    }

    Ref<Application> application = New<Application>();
    Ref<updateWindow> window;
};

}  // namespace

TEST_F(UpdateWindow, IsSilentAboutTheCurrentVersionUnlessAsked) {
    for (const char* version : {"2.1.0", "2.1", "2.1.0rc1", "2.1.0.7"}) {
        const ScriptedServer server({page(feed(version)), page(feed(version))});
        Person nobody({});
        EXPECT_TRUE(Show(server)) << version;
        EXPECT_THAT(nobody.Read, IsEmpty());
        Person asker({"OK"});
        EXPECT_TRUE(Show(server, false));
        EXPECT_THAT(asker.Read, ElementsAre("You are using the current version. No update is available."));
        EXPECT_EQ(server.Requests().at(0).substr(0, 59), "GET /photography/marrowbeck/updates/marrowbeck.xml HTTP/1.0");
    }
}

TEST_F(UpdateWindow, OffersEveryOtherVersion) {
    for (const char* version : {"2.1.1", "2.0", "1.9.9", "3", "", "2.10"}) {
        for (const bool free : {true, false}) {
            const ScriptedServer server({page(feed(version, free ? "yes" : "No"))});
            Person person({"Cancel"});
            EXPECT_TRUE(Show(server)) << version;
            EXPECT_THAT(
                person.Read,
                ElementsAre("Version " + std::string(version) + " is now available. (You are using version 2.1.0.) " +
                            (free ? "This is a free upgrade. Would you like to automatically download this update?"
                                  : "This is a paid upgrade. Would you like to automatically download the trial "
                                    "version?") +
                            "|New \u2013 & better"));
        }
    }
}

TEST_F(UpdateWindow, SaysWhatWentWrong) {
    const std::string noFeed = "There was a problem with the website content. Please try again later.";
    for (const std::string& content : {std::string(), std::string("<CurrentVersion>3</CurrentVersion>")}) {
        const ScriptedServer server({page(content)});
        Person person({"OK"});
        EXPECT_TRUE(Show(server));
        EXPECT_THAT(person.Read, ElementsAre(noFeed));
    }
    {
        const ScriptedServer server({[](ScriptedServer::Peer& peer) {
            peer.ReadRequest();
            peer.Send("HTTP/1.0 200 OK\r\n\r\nstandalone");
            for (int i = 0; i < 64; ++i) peer.Send(std::string(1024 * 1024, 'x'));
            peer.AwaitClose();
        }});
        Person person({"OK"});
        EXPECT_TRUE(Show(server));
        EXPECT_THAT(person.Read, ElementsAre(noFeed));
    }
    Person person({"OK"});
    EXPECT_TRUE(Show({String("127.0.0.1:" + std::to_string(UnusedPort())), ""}));
    EXPECT_THAT(person.Read, ElementsAre("There was a communication error with the website. Please try again later. "
                                         "(Code: 101)"));
}

TEST_F(UpdateWindow, DownloadsToTheDesktopAndOpensTheFile) {
    const RecordingOpener opener;
    std::ofstream(OnDesktop("Marrowbeck-3.tar")) << "an older file of that name, which is replaced";
    const std::string content(3'000'000, 'm');
    const ScriptedServer files({page(content)});
    const ScriptedServer server({page(feed("3", "Yes", files.Url("/dir/Marrowbeck-3.tar").ToStd()))});
    Person person({"Download", "Yes"});
    EXPECT_TRUE(Show(server));
    ASSERT_EQ(person.Read.size(), 2U);
    EXPECT_EQ(person.Read[1], "The file 'Marrowbeck-3.tar' is on your Desktop. Would you like to open it now?");
    EXPECT_EQ(readFile(OnDesktop("Marrowbeck-3.tar")), content);
    EXPECT_EQ(opener.Call(), "file://" + OnDesktop("Marrowbeck-3.tar") + "\n");
    EXPECT_EQ(window->StaticText1->Text().Bytes(), "Downloading: 2,929KB downloaded...");
    EXPECT_EQ(window->ProgressBar1->Maximum(), 2929);
    EXPECT_EQ(window->ProgressBar1->Value(), 2929);
    EXPECT_TRUE(window->ProgressBar1->Visible());
}

TEST_F(UpdateWindow, KeepsAnEarlierFileUntilAnotherIsWhole) {
    const std::string part = "HTTP/1.0 200 OK\r\nContent-Length: 100\r\n\r\nhalf";
    const auto cancelled = [&](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        peer.Send(part);
        peer.AwaitClose();
    };
    const ScriptedServer files({cancelled, ScriptedServer::Answering(part), ScriptedServer::Answering("")});
    const std::string url = files.Url("/x.tar").ToStd();
    const auto download = [&](const std::string& from, std::vector<std::string> answers) {
        std::ofstream(OnDesktop("x.tar")) << "an earlier file";
        // A feed that is longer than the download, whose length is another's.
        const ScriptedServer server({page(feed("3", "Yes", from) + std::string(5000, ' '))});
        Person person(std::move(answers));
        EXPECT_TRUE(Show(server));
        EXPECT_EQ(readFile(OnDesktop("x.tar")), "an earlier file");
        EXPECT_FALSE(std::filesystem::exists(OnDesktop("x (earlier).tar")));
        return person.Read.back();
    };
    QTimer cancel;
    cancel.callOnTimeout([&] {
        if (std::filesystem::exists(OnDesktop("x (earlier).tar")) && files.Requests().size() == 1 &&
            window->hp->HTTPStatusCode() == 200 && window->ProgressBar1->Maximum() == 0) {
            window->PushButton1->Push();
        }
    });
    cancel.start(5);
    download(url, {"Download"});
    cancel.stop();
    for (const int number : {2, 3}) {
        const std::string name = "x (" + std::to_string(number) + ").tar";
        EXPECT_EQ(download(url, {"Download", "No"}),
                  "The file '" + name + "' is on your Desktop. Would you like to open it now?");
        EXPECT_EQ(readFile(OnDesktop(name)), number == 2 ? "half" : "");
    }
    EXPECT_THAT(download("http://127.0.0.1:" + std::to_string(UnusedPort()) + "/x.tar", {"Download", "OK"}),
                testing::EndsWith("(Code: 101)"));
    EXPECT_THAT(download(files.Url("/\r\nX: y/x.tar").ToStd(), {"Download", "OK"}), testing::EndsWith("(Code: 103)"));
}

TEST_F(UpdateWindow, FollowsShortLinksByTheirPage) {
    const ScriptedServer files({ScriptedServer::Answering("HTTP/1.0 200 OK\r\n\r\nthe file")});
    const std::string target = files.Url("/file").ToStd();
    // Two steps, each with a page that names the next in quotes.
    ScriptedServer* links = nullptr;
    const auto link = [](const std::string& url) {
        return page("<html><a HREF=\"" + url + "\">moved</a> \"x\"</html>" + std::string(3000, ' '));
    };
    ScriptedServer shortLinks(
        {[&](ScriptedServer::Peer& peer) { link(links->Url("/b").ToStd())(peer); }, link(target)});
    links = &shortLinks;
    const ScriptedServer server({page(feed("3", "Yes", shortLinks.Url("/a").ToStd()))});
    Person person({"Download", "No"});
    EXPECT_TRUE(Show({server.Host(), shortLinks.Host()}));
    EXPECT_EQ(readFile(OnDesktop("file")), "the file");
    EXPECT_TRUE(window->isDownloadingFile);
    EXPECT_EQ(window->ProgressBar1->Maximum(), 2) << "the last length that was known";
    EXPECT_EQ(shortLinks.Requests().size(), 2U);

    // A feed may be behind one as well.
    const ScriptedServer feeds({page(feed("2.1"))});
    const ScriptedServer front({link(feeds.Url().ToStd())});
    EXPECT_TRUE(Show({front.Host(), front.Host()}));
    EXPECT_EQ(feeds.Requests().size(), 1U);
}

TEST_F(UpdateWindow, AsksALinkThatLeadsToItselfMoreAndMoreSeldom) {
    std::string self;
    std::vector<ScriptedServer::Part> parts(
        4, [&](ScriptedServer::Peer& peer) { page("<a href=\"" + self + "\">")(peer); });
    const ScriptedServer links(parts);
    self = links.Url("/self").ToStd();
    QTimer cancel;
    cancel.callOnTimeout([&] {
        if (links.Requests().size() == parts.size()) window->PushButton1->Push();
    });
    cancel.start(5);
    const double begin = Microseconds();
    EXPECT_TRUE(Show({links.Host(), links.Host()}));
    EXPECT_GE(Microseconds() - begin, (125 + 250 + 500) * 1000.0);
    EXPECT_EQ(links.Requests().size(), parts.size());
}

TEST_F(UpdateWindow, ADownloadWithoutANameFails) {
    const ScriptedServer server({page(feed("3", "Yes", "http://127.0.0.1/dir/"))});
    Person person({"Download", "OK"});
    EXPECT_TRUE(Show(server));
    ASSERT_EQ(person.Read.size(), 2U);
    EXPECT_EQ(person.Read[1].substr(person.Read[1].size() - 9), "(Code: 1)");
}

TEST_F(UpdateWindow, ADownloadThatCannotBeWrittenIsNotComplete) {
    const ScriptedServer files({page(std::string(100'000, 'x'))});
    const ScriptedServer server({page(feed("3", "Yes", files.Url("/new.tar").ToStd()))});
    Person person({"Download", "OK"});
    const FullDisk disk(40'000);
    EXPECT_TRUE(Show(server));
    ASSERT_EQ(person.Read.size(), 2U);
    EXPECT_EQ(person.Read[1], "The file '" + OnDesktop("new.tar") +
                                  "' could not be written. Please check the disk and try again later. (the file would "
                                  "be larger than allowed)");
    EXPECT_FALSE(std::filesystem::exists(OnDesktop("new.tar")));
}

TEST_F(UpdateWindow, StaysOpenBesideTheWebsite) {
    const RecordingOpener opener;
    const ScriptedServer server({page(feed("3"))});
    Person person({"Go to Website"});
    bool wasOpen = false;
    QTimer cancel;
    cancel.callOnTimeout([&] {
        if (!opener.WasCalled()) return;
        wasOpen = window->Visible() && !window->ProgressBar1->Visible();
        window->PushButton1->Push();
    });
    cancel.start(20);
    EXPECT_TRUE(Show(server));
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(opener.Call(), server.Url("/photography/marrowbeck/marrowbeck.html").ToStd() + "\n");
}

TEST_F(UpdateWindow, AnyWayOfClosingEndsTheCheck) {
    for (const bool byButton : {true, false}) {
        std::atomic<bool> isAsked = false;
        bool serverSawTheEnd = false;
        {
            const ScriptedServer server({[&](ScriptedServer::Peer& peer) {
                peer.ReadRequest();
                isAsked = true;
                peer.AwaitClose();
                serverSawTheEnd = true;
            }});
            QTimer impatience;
            impatience.callOnTimeout([&] {
                if (!isAsked) return;
                impatience.stop();
                EXPECT_EQ(window->StaticText1->Text().Bytes(), "Checking for updates...");
                EXPECT_EQ(window->ProgressBar1->Maximum(), 0);
                if (byButton) {
                    window->PushButton1->Push();
                } else {
                    QApplication::activeWindow()->close();
                }
            });
            impatience.start(5);
            EXPECT_TRUE(Show(server));
            EXPECT_FALSE(window->hp->IsConnected());
        }
        EXPECT_TRUE(serverSawTheEnd);
    }
}
