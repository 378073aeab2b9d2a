// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <semaphore>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using namespace std::chrono_literals;

namespace {

const auto kOk = ScriptedServer::Answering("HTTP/1.0 200 OK\r\nA: b\r\n\r\nok");

void silent(ScriptedServer::Peer& peer) {
    peer.ReadRequest();
    peer.AwaitClose();
}

double secondsSince(double begin) {
    return (Microseconds() - begin) / 1e6;
}

}  // namespace

TEST(HTTPWaiting, GivesThePageTheHeadersOrTheFile) {
    const TemporaryFolder folder;
    const auto file = New<FolderItem>(String(folder.Path("file")));
    const ScriptedServer server({kOk, kOk, kOk, kOk});
    Client client;
    EXPECT_EQ(client->Get(server.Url(), 5).Bytes(), "ok");
    EXPECT_EQ(client->Post(server.Url(), 0).Bytes(), "ok");
    EXPECT_EQ(client->GetHeaders(server.Url(), 5)->Value("A").Bytes(), "b");
    EXPECT_TRUE(client->Get(server.Url(), file, 5));
    EXPECT_EQ(file->Length(), 2U);
    EXPECT_FALSE(client->Get(server.Url(), file, 5)) << "the server is gone";
    EXPECT_EQ(client->Get(server.Url(), 5).Bytes(), "") << "and with it what it said before";
    EXPECT_EQ(client->HTTPStatusCode(), 0);
    EXPECT_FALSE(client->PageHeaders());
    EXPECT_TRUE(client.Log.empty());
    EXPECT_EQ(client.Ends, 0);
    EXPECT_TRUE(client.Pieces.empty());
}

TEST(HTTPWaiting, EndsOneTimeOutAfterTheLastByte) {
    const ScriptedServer server({silent,
                                 [](ScriptedServer::Peer& peer) {
                                     peer.ReadRequest();
                                     peer.SendInBytes("HTTP/1.0 200 OK\r\n\r\n");
                                     peer.SendInBytes("trickle", 400ms);
                                 },
                                 [](ScriptedServer::Peer& peer) {
                                     peer.ReadRequest();
                                     peer.Send("HTTP/1.0 200 OK\r\n\r\npart");
                                     peer.AwaitClose();
                                 }});
    Client client;
    double begin = Microseconds();
    EXPECT_EQ(client->Get(server.Url(), 1).Bytes(), "");
    EXPECT_EQ(client->ErrorCode(), HTTPSocket::TimedOut);
    EXPECT_FALSE(client->IsConnected());
    EXPECT_GE(secondsSince(begin), 0.98);
    begin = Microseconds();
    EXPECT_EQ(client->Get(server.Url(), 2).Bytes(), "trickle");
    EXPECT_EQ(client->ErrorCode(), 0);
    EXPECT_GE(secondsSince(begin), 2.5);
    EXPECT_EQ(client->Get(server.Url(), 1).Bytes(), "part");
    EXPECT_EQ(client->ErrorCode(), HTTPSocket::TimedOut);
}

TEST(HTTPWaiting, OnAThreadLeavesTheWindowAlone) {
    std::binary_semaphore windowServed(0);
    const ScriptedServer server({[&windowServed](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [&windowServed] { windowServed.release(); }, Qt::QueuedConnection);
        if (windowServed.try_acquire_for(4s)) peer.Send("HTTP/1.0 200 OK\r\n\r\nlate");
    }});
    const auto socket = New<HTTPSocket>();
    const auto thread = New<Thread>();
    std::string page;
    thread->OnRun = [&] { page = socket->Get(server.Url(), 0).ToStd(); };
    thread->Run();
    ASSERT_TRUE(RunUntil([&] { return thread->State() == Thread::NotRunning; }));
    EXPECT_EQ(page, "late");
}

TEST(HTTPWaiting, AThreadCanBeKilledMeanwhile) {
    const ScriptedServer server({silent});
    auto socket = New<HTTPSocket>();
    const auto thread = New<Thread>();
    thread->OnRun = [socket = std::move(socket), &server] { socket->Get(server.Url(), 0); };
    thread->Run();
    ASSERT_TRUE(RunUntil([&] { return !server.Requests().empty(); }));
    thread->Kill();
    EXPECT_EQ(thread->State(), Thread::NotRunning);
    thread->OnRun = nullptr;  // the socket goes, and with it the connection
}
