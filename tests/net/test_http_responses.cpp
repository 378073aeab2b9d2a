// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using testing::ElementsAre;

namespace {

Ref<FolderItem> item(const std::string& path) {
    return New<FolderItem>(String(path));
}

}  // namespace

TEST(HTTPResponse, IsReadWithLineEndsOfEveryKindAndByteByByte) {
    for (const std::string eol : {"\r\n", "\n", "\r"}) {
        const std::string text = "HTTP/1.1 200 OK" + eol + "Content-Length: 5" + eol + "X: y" + eol + eol + "hello";
        const ScriptedServer server({[&](ScriptedServer::Peer& peer) {
            peer.ReadRequest();
            peer.SendInBytes(text);
        }});
        Client client;
        client->Get(server.Url("/a"));
        ASSERT_TRUE(client.Await());
        EXPECT_THAT(client.Log, ElementsAre("connected", "headers 200", "page 200 " + server.Url("/a").ToStd()));
        EXPECT_EQ(client.Content, "hello");
        EXPECT_EQ(client.Pieces, "hello");
        EXPECT_EQ(client.Received, 5);
        EXPECT_EQ(client.Total, 5);
        EXPECT_EQ(client->PageHeaders()->Value("x").Bytes(), "y");
        EXPECT_EQ(client->HTTPStatusCode(), 200);
    }
}

TEST(HTTPResponse, EndsWithTheConnectionWhateverItsLengthSays) {
    const struct {
        std::string head, body;
        int total;
    } cases[] = {{"HTTP/1.0 200 OK", "no length", 0},
                 {"HTTP/1.0 200 OK\r\nContent-length: 2", "longer", 2},
                 {"HTTP/1.0 200\r\nContent-length: 99", "short", 99},
                 {"HTTP/1.1 200 OK\r\nContent-length: x", "5\r\nhello\r\n0\r\n\r\n", 0},
                 {"HTTP/1.0 200 OK\r\nContent-length: 99999999999", "", 2147483647}};
    std::vector<ScriptedServer::Part> parts;
    for (const auto& each : cases) parts.push_back(ScriptedServer::Answering(each.head + "\r\n\r\n" + each.body));
    parts.emplace_back([](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        peer.Send("HTTP/1.0 200 OK\r\n\r\nhalf");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        peer.Reset();
    });
    parts.emplace_back([](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        peer.Send("HTTP/1.0 200 OK\r\nContent-length: 99\r\n\r\nhal");
        peer.AwaitClose();
    });
    const ScriptedServer server(parts);
    Client client;
    for (const auto& each : cases) {
        client->Get(server.Url());
        ASSERT_TRUE(client.Await());
        EXPECT_EQ(client.Content, each.body);
        EXPECT_EQ(client.Total, each.total);
    }
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "half");
    EXPECT_EQ(client->ErrorCode(), 0);
    // A connection that we close ourselves ends in silence.
    const std::size_t lines = client.Log.size();
    client->Get(server.Url());
    ASSERT_TRUE(RunUntil([&] { return client.Total == 99; }));
    client->Close();
    RunFor(50);
    EXPECT_EQ(client.Log.size(), lines + 2);
}

TEST(HTTPResponse, WithoutAHeadIsAPageOfNothing) {
    const auto halfHead = [](ScriptedServer::Peer& peer) {
        peer.ReadRequest();
        peer.Send("HTTP/1.0 200 OK\r\nA: b\r\n");
    };
    const ScriptedServer server({ScriptedServer::Answering(""), halfHead, ScriptedServer::Answering("\n\nbody")});
    Client client;
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_THAT(client.Log, ElementsAre("connected", "page 0 " + server.Url().ToStd()));
    EXPECT_FALSE(client.Headers);
    EXPECT_FALSE(client->PageHeaders());
    // A head that breaks off is never reported.
    client->Get(server.Url());
    RunFor(150);
    EXPECT_EQ(client.Ends, 1);
    EXPECT_FALSE(client->IsConnected());
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "body");
    EXPECT_FALSE(client->PageHeaders()) << "a head without a header";
    EXPECT_TRUE(client.Headers);
}

TEST(HTTPResponse, WithAHeadWithoutMeasureIsAnErrorAtOnce) {
    const auto endless = [](const std::string& line) {
        return [line](ScriptedServer::Peer& peer) {
            peer.ReadRequest();
            for (std::size_t sent = 0; sent < TCPSocket::IncomingLimit; sent += line.size()) peer.Send(line);
            peer.AwaitClose();
        };
    };
    std::string manyLines;
    for (int i = 0; i < 300'000; ++i) manyLines += ":\r";
    const ScriptedServer server({endless(std::string(1000, 'x')), ScriptedServer::Answering(manyLines + "\r")});
    Client client;
    for (int i = 0; i < 2; ++i) {
        client.Log.clear();
        client->Get(server.Url());
        ASSERT_TRUE(client.Await());
        EXPECT_THAT(client.Log, ElementsAre("connected", "error 3"));
        EXPECT_FALSE(client->IsConnected());
    }
}

TEST(HTTPDownload, FillsANewFileOrReplacesAnOldOne) {
    const TemporaryFolder folder;
    const std::string body("\0\xFF\r\n\r\nbytes", 12);
    const auto answer = ScriptedServer::Answering("HTTP/1.0 404 Gone\r\nContent-length: 12\r\n\r\n" + body);
    const ScriptedServer server({answer, answer, answer, ScriptedServer::Answering("")});
    std::ofstream(folder.Path("old")) << "something much longer than what will come";
    Client client;
    for (const std::string name : {"new", "old"}) {
        client.Log.clear();
        client->Get(server.Url("/f"), item(folder.Path(name)));
        ASSERT_TRUE(client.Await());
        EXPECT_THAT(client.Log,
                    ElementsAre("connected", "headers 404", "download 404 " + server.Url("/f").ToStd() + " " + name));
        EXPECT_EQ(readFile(folder.Path(name)), body);
    }
    EXPECT_EQ(client.Received, 12);
    // The same socket goes back to pages, and to a download of nothing.
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, body);
    client->Get(server.Url(), item(folder.Path("old")));
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Log.back(), "download 0 " + server.Url().ToStd() + " old");
    EXPECT_EQ(readFile(folder.Path("old")), "");
}

TEST(HTTPDownload, NeedsAFileThatCanBeWritten) {
    const TemporaryFolder folder;
    std::filesystem::create_directory_symlink(folder.Path(), folder.Path("link"));
    const ScriptedServer server({ScriptedServer::Answering("HTTP/1.0 200 OK\r\n\r\nok")});
    Client client;
    for (const std::string& path :
         {folder.Path(), folder.Path("link"), folder.Path("no/such"), std::string("/dev/full/x")}) {
        client.Log.clear();
        client->Get(server.Url(), item(path));
        EXPECT_THAT(client.Log, ElementsAre("error 1")) << path;
        EXPECT_EQ(client->ErrorCode(), HTTPSocket::DownloadUnusable);
    }
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client->ErrorCode(), 0);
    EXPECT_EQ(server.Requests().size(), 1U) << "nothing was sent for the others";
    // A connection that fails leaves the empty file behind.
    client->Get(String("127.0.0.1:" + std::to_string(UnusedPort())), item(folder.Path("empty")));
    ASSERT_TRUE(RunUntil([&] { return client->ErrorCode() != 0; }));
    EXPECT_EQ(std::filesystem::file_size(folder.Path("empty")), 0U);
}
