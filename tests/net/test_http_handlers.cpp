// SPDX-License-Identifier: GPL-2.0-or-later
// Handlers that turn upon the socket that calls them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using testing::ElementsAre;

namespace {

const auto kFirst = ScriptedServer::Answering("HTTP/1.0 401 First\r\n\r\nfirst");
const auto kSecond = ScriptedServer::Answering("HTTP/1.0 200 Second\r\n\r\nsecond");

}  // namespace

TEST(HTTPHandlers, MayBeginANewRequestFromAnyEvent) {
    for (const std::string event : {"connected", "headers", "progress", "authentication"}) {
        for (const bool nested : {false, true}) {
            const ScriptedServer server({kFirst, kSecond});
            Client client;
            bool begun = false;
            const auto happened = [&](const char* now) {
                if (event != now || std::exchange(begun, true)) return;
                client->Get(server.Url("/second"));
                // A dialog in the handler: the new answer comes while the old event is still being handled.
                const bool served = !nested || RunUntil([&] { return client.Ends == 1; });
                EXPECT_TRUE(served);
            };
            client->OnConnected = [&](auto&&...) { happened("connected"); };
            client->OnHeadersReceived = [&](auto&&...) { happened("headers"); };
            client->OnReceiveProgress = [&](auto&&...) { happened("progress"); };
            client->OnAuthenticationRequired = [&](auto&&...) {
                happened("authentication");
                return begun;
            };
            client->Get(server.Url("/first"));
            ASSERT_TRUE(RunUntil([&] { return client.Ends == 1; }));
            RunFor(20);
            EXPECT_TRUE(begun);
            EXPECT_EQ(client.Ends, 1);
            EXPECT_EQ(client.Content, "second");
            EXPECT_EQ(client.Log.back(), "page 200 " + server.Url("/second").ToStd());
        }
    }
}

TEST(HTTPHandlers, MayDropTheSocketThatIsWaitedFor) {
    const ScriptedServer server({kFirst});
    auto socket = New<HTTPSocket>();
    socket->OnAuthenticationRequired = [&](auto&&...) {
        socket = Nil;
        return false;
    };
    EXPECT_EQ(socket->Get(server.Url(), 5).Bytes(), "first");
}

TEST(HTTPHandlers, ThatRunTheEventLoopAreNotEnteredAgain) {
    const ScriptedServer server({[](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        peer.SendInBytes("HTTP/1.0 200 OK\r\n\r\nabcdef", std::chrono::milliseconds(2));
    }});
    Client client;
    int depth = 0;
    int deepest = 0;
    std::string pieces;
    client->OnReceiveProgress = [&](HTTPSocket&, int, int, const String& data) {
        deepest = std::max(deepest, ++depth);
        pieces += data.ToStd();
        RunFor(10);
        --depth;
    };
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(pieces, "abcdef");
    EXPECT_EQ(client.Content, "abcdef");
}
