// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/network/TCPSocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>
#include <thread>

#include "framework/core/files/Descriptor.h"
#include "framework/core/objects/Ref.h"
#include "tests/support/EventLoop.h"

using namespace framework;
using marrowbeck::test::RunFor;
using marrowbeck::test::RunUntil;
using testing::ElementsAre;

namespace {

/// The server's end of a connection, for a script that runs on a thread of its own.
class Peer {
  public:
    explicit Peer(int number) : descriptor_(number) {}

    void Send(const std::string& bytes) {
        std::size_t sent = 0;
        while (sent < bytes.size()) {
            const ssize_t count = ::send(descriptor_.Number(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return;
            sent += static_cast<std::size_t>(count);
        }
    }
    std::string Receive(std::size_t size) {
        std::string bytes(size, '\0');
        std::size_t got = 0;
        while (got < size) {
            const ssize_t count = descriptor_.Read(bytes.data() + got, size - got);
            if (count <= 0) break;
            got += static_cast<std::size_t>(count);
        }
        bytes.resize(got);
        return bytes;
    }
    /// Ends the connection as a crash would, without an orderly close.
    void Reset() {
        const linger none{1, 0};
        ::setsockopt(descriptor_.Number(), SOL_SOCKET, SO_LINGER, &none, sizeof none);
        descriptor_.Close();
    }

  private:
    Descriptor descriptor_;
};

/// Listens on a loopback port and runs one script for each connection, in order.
class Server {
  public:
    using Script = std::function<void(Peer&)>;

    explicit Server(std::vector<Script> scripts) : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int bound = ::bind(listener_.Number(), reinterpret_cast<sockaddr*>(&address), sizeof address);
        EXPECT_EQ(bound, 0);
        ::listen(listener_.Number(), 8);
        socklen_t size = sizeof address;
        ::getsockname(listener_.Number(), reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this, scripts = std::move(scripts)] {
            for (const Script& script : scripts) {
                Peer peer(::accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
                script(peer);
            }
        });
    }
    ~Server() {
        ::shutdown(listener_.Number(), SHUT_RDWR);
        thread_.join();
    }

    int Port() const { return port_; }

  private:
    Descriptor listener_;
    int port_ = 0;
    std::thread thread_;
};

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

    bool Saw(const std::string& event) const { return std::find(events.begin(), events.end(), event) != events.end(); }

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

/// While one lives, the process can open no file and no socket.
class NoMoreDescriptors {
  public:
    NoMoreDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &limit_);
        const rlimit few{64, limit_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
        while (taken_.emplace_back(::dup(STDERR_FILENO)).IsOpen()) continue;
    }
    ~NoMoreDescriptors() { ::setrlimit(RLIMIT_NOFILE, &limit_); }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

  private:
    rlimit limit_{};
    std::vector<Descriptor> taken_;
};

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
    Server server({[](Peer& peer) { peer.Send("echo " + peer.Receive(5)); }});
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
    Server server({[](Peer& peer) { peer.Send(std::string("ab\0cd\xFF", 6)); }});
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

TEST(TCPSocket, PurgeDropsWhatHasComeIn) {
    Server server({[](Peer& peer) { peer.Send("old"); }});
    const auto socket = socketTo(server.Port());
    socket->onData = [] {};
    socket->Connect();
    ASSERT_TRUE(runUntilError(socket));
    socket->Purge();
    EXPECT_TRUE(socket->Lookahead().IsEmpty());
}

TEST(TCPSocket, FailedAttemptsHaveTheirCodes) {
    int unused = 0;
    { unused = Server({}).Port(); }
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
    EXPECT_EQ(attempt(65536, "127.0.0.1"), SocketCore::InvalidPort);
    const NoMoreDescriptors none;
    EXPECT_EQ(attempt(80, "127.0.0.1"), SocketCore::SocketFailed);
    EXPECT_EQ(attempt(80, "localhost"), SocketCore::SocketFailed);
}

TEST(TCPSocket, WritingWithoutAConnectionIsAnError) {
    const auto socket = socketTo(80);
    socket->Write("lost");
    EXPECT_EQ(socket->LastErrorCode(), SocketCore::InvalidState);
    socket->Poll();
    EXPECT_TRUE(socket->events.empty());
}

TEST(TCPSocket, ABrokenConnectionIsLostToo) {
    Server server({[](Peer& peer) {
        peer.Receive(1);
        peer.Reset();
    }});
    const auto socket = socketTo(server.Port());
    socket->Connect();
    socket->Write("x");
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_EQ(socket->LastErrorCode(), SocketCore::LostConnection);
}

TEST(TCPSocket, LargeDataFlowsBothWays) {
    const std::string large = pattern(6'000'000);
    bool same = false;
    Server server({[&](Peer& peer) {
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
    Server server({[&](Peer& peer) { peer.Send(large); }});
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

TEST(TCPSocket, ClosingRaisesNothing) {
    Server server({[](Peer& peer) {
        peer.Send("x");
        peer.Receive(1);
    }});
    const auto socket = socketTo(server.Port());
    socket->onData = [&] { socket->Close(); };
    socket->Connect();
    ASSERT_TRUE(RunUntil([&] { return socket->Saw("data"); }));
    EXPECT_FALSE(socket->IsConnected());
    RunFor(50);
    EXPECT_THAT(socket->events, ElementsAre("connected", "data"));
    EXPECT_EQ(socket->ReadAll().Bytes(), "x");
    socket->onData = nullptr;

    socket->Connect();
    socket->Close();
    RunFor(20);
    EXPECT_EQ(socket->events.size(), 2U);
}

TEST(TCPSocket, AHandlerMayDropTheSocket) {
    const auto answer = [](Peer& peer) { peer.Send("x"); };
    Server server({answer, answer, answer});
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

TEST(TCPSocket, AHandlerMayConnectAnew) {
    Server server({[](Peer& peer) {
                       peer.Send("first");
                       peer.Receive(1);
                   },
                   [](Peer& peer) { peer.Send("second"); }, [](Peer& peer) { peer.Send("third"); }});
    const auto socket = socketTo(server.Port());
    int connections = 1;
    socket->onData = [&] {
        socket->received = socket->Lookahead().ToStd();
        if (connections == 1) {
            ++connections;
            socket->Connect();
            EXPECT_TRUE(socket->Lookahead().IsEmpty());
        }
    };
    socket->onError = [&] {
        if (connections == 2) {
            ++connections;
            socket->Connect();
        }
    };
    socket->Connect();
    ASSERT_TRUE(RunUntil([&] { return socket->received == "third"; }));
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_THAT(socket->events,
                ElementsAre("connected", "data", "connected", "data", "error 102", "connected", "data", "error 102"));
}

TEST(TCPSocket, EventsOfAConnectionDoNotNest) {
    Server server({[](Peer& peer) {
        peer.Send("a");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        peer.Send("b");
    }});
    const auto socket = socketTo(server.Port());
    int depth = 0;
    socket->onData = [&] {
        EXPECT_EQ(++depth, 1);
        RunFor(80);
        socket->Poll();
        socket->received += socket->ReadAll().ToStd();
        --depth;
    };
    socket->Connect();
    ASSERT_TRUE(runUntilError(socket));
    EXPECT_EQ(socket->received, "ab");
}
