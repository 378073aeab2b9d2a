// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/network/TCPSocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <functional>

#include "framework/core/objects/Ref.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ScriptedServer.h"

using namespace framework;
using marrowbeck::test::RunFor;
using marrowbeck::test::RunUntil;
using marrowbeck::test::ScriptedServer;
using marrowbeck::test::UnusedPort;
using testing::ElementsAre;
using Peer = ScriptedServer::Peer;

namespace {

/// Writes down its events and lets a test add to each.
class RecordingSocket : public TCPSocket {
  public:
    void Event_Connected() override {
        note("connected");
        if (onConnected) onConnected();
    }
    void Event_DataAvailable() override {
        if (events.empty() || events.back() != "data") note("data");
        if (onData) {
            onData();
        } else {
            received += ReadAll().ToStd();
        }
    }
    void Event_Error() override {
        note("error " + std::to_string(LastErrorCode()));
        if (onError) onError();
    }
    void Event_SendComplete() override { note("sent"); }

    std::vector<std::string> events;
    std::string received;
    std::function<void()> onConnected;
    std::function<void()> onData;
    std::function<void()> onError;

  private:
    void note(const std::string& event) { events.push_back(event); }
};

Ref<RecordingSocket> socketTo(int port, const String& address = "127.0.0.1") {
    auto socket = New<RecordingSocket>();
    socket->Address(address);
    socket->Port(port);
    return socket;
}

bool runUntilError(const Ref<RecordingSocket>& socket) {
    return RunUntil([&] { return !socket->events.empty() && socket->events.back().starts_with("error"); });
}

std::string pattern(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 2654435761U >> 13U);
    return bytes;
}

}  // namespace

TEST(TCPSocket, AConversationIsReportedInOrder) {
    const ScriptedServer server({[](Peer& peer) { peer.Send("echo " + peer.Receive(5)); }});
    const auto socket = socketTo(server.Port());
    socket->onConnected = [&] {
        EXPECT_TRUE(socket->IsConnected());
        socket->Write("hello");
    };
    socket->onError = [&] { EXPECT_FALSE(socket->IsConnected()); };
    socket->Connect();
    EXPECT_TRUE(socket->events.empty());
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_EQ(socket->received, "echo hello");
    EXPECT_THAT(socket->events, ElementsAre("connected", "sent", "data", "error 102"));
    RunFor(30);
    EXPECT_EQ(socket->events.size(), 4U);
}

TEST(TCPSocket, WhatHasComeInWaitsToBeRead) {
    const ScriptedServer server({[](Peer& peer) { peer.Send(std::string("ab\0cd\xFF", 6)); }});
    const auto socket = socketTo(server.Port());
    socket->onData = [] {};
    socket->Connect();
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_EQ(socket->Lookahead().Bytes(), std::string_view("ab\0cd\xFF", 6)) << "the close takes nothing away";
    EXPECT_EQ(socket->Read(3, Encodings::UTF8).Encoding(), Encodings::UTF8);
    EXPECT_EQ(socket->Read(1).Bytes(), "c");
    EXPECT_TRUE(socket->Read(0).IsEmpty());
    EXPECT_EQ(socket->Read(100).Bytes(), "d\xFF");
    EXPECT_TRUE(socket->Lookahead().IsEmpty());
    EXPECT_TRUE(socket->ReadAll().IsEmpty());
}

TEST(TCPSocket, FailedAttemptsHaveTheirCodes) {
    const int unused = UnusedPort();
    const auto attempt = [](int port, const String& address) {
        const auto socket = socketTo(port, address);
        socket->Connect();
        EXPECT_TRUE(socket->events.empty()) << "never before Connect has returned";
        EXPECT_TRUE(runUntilError(socket));
        EXPECT_EQ(socket->events.size(), 1U);
        return socket->LastErrorCode();
    };
    EXPECT_EQ(attempt(unused, "127.0.0.1"), SocketCore::ConnectFailed);
    EXPECT_EQ(attempt(unused, "localhost"), SocketCore::ConnectFailed) << "each of its addresses";
    EXPECT_EQ(attempt(80, String(std::string(300, 'x'))), SocketCore::NameNotResolved);
    EXPECT_EQ(attempt(80, ""), SocketCore::NameNotResolved);
    EXPECT_EQ(attempt(80, String(std::string_view("127.0.0.1\0.example", 18))), SocketCore::NameNotResolved);
    EXPECT_EQ(attempt(0, "127.0.0.1"), SocketCore::InvalidPort);
    EXPECT_EQ(attempt(65535, "127.0.0.1"), SocketCore::ConnectFailed);
    EXPECT_EQ(attempt(65536, "127.0.0.1"), SocketCore::InvalidPort);
    // No file and no socket can be opened any more.
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const int next = ::dup(STDERR_FILENO);
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), limit.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_EQ(attempt(80, "127.0.0.1"), SocketCore::SocketFailed);
    EXPECT_EQ(attempt(80, "localhost"), SocketCore::SocketFailed);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

TEST(TCPSocket, LargeDataFlowsBothWays) {
    const std::string large = pattern(6'000'000);
    bool same = false;
    const ScriptedServer server({[&](Peer& peer) {
        same = peer.Receive(large.size()) == large;
        peer.Send(large);
    }});
    const auto socket = socketTo(server.Port());
    socket->Connect();
    socket->Write(String(large));
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_TRUE(same);
    EXPECT_TRUE(socket->received == large);
}

TEST(TCPSocket, AnUnreadBodyIsHeldUpAndComesWholeLater) {
    const std::string large = pattern(6'000'000);
    const ScriptedServer server({[&](Peer& peer) { peer.Send(large); }});
    const auto socket = socketTo(server.Port());
    socket->onData = [] {};
    socket->Connect();
    ASSERT_TRUE(RunUntil([&] { return socket->Lookahead().ByteCount() >= std::size_t{1024} * 1024; }));
    RunFor(50);
    EXPECT_EQ(socket->Lookahead().ByteCount(), std::size_t{1024} * 1024);
    EXPECT_TRUE(socket->IsConnected());
    socket->received = socket->ReadAll().ToStd();
    socket->onData = nullptr;
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_TRUE(socket->received == large);
}

TEST(TCPSocket, AHandlerMayDropTheSocket) {
    const auto answer = [](Peer& peer) { peer.Send("x"); };
    const ScriptedServer server({answer, answer, answer});
    for (const int moment : {0, 1, 2}) {
        Ref<RecordingSocket> socket = socketTo(server.Port());
        bool dropped = false;
        const auto drop = [&] {
            dropped = true;
            socket = Nil;
        };
        if (moment == 0) socket->onConnected = drop;
        if (moment == 1) socket->onData = drop;
        if (moment == 2) socket->onError = drop;
        socket->Connect();
        EXPECT_TRUE(RunUntil([&] { return dropped; })) << moment;
        RunFor(10);
    }
}
