// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using testing::ElementsAre;
using namespace std::string_view_literals;

namespace {

const auto kOk = ScriptedServer::Answering("HTTP/1.0 200 OK\r\n\r\nok");

std::string encoded(const String& key, const String& value) {
    const auto form = New<Dictionary>();
    form->Value(key, value);
    return New<HTTPSocket>()->EncodeFormData(form).ToStd();
}

}  // namespace

TEST(HTTPRequest, IsWrittenByteForByte) {
    const ScriptedServer server({kOk, kOk, kOk, kOk});
    const std::string host = server.Host().ToStd();
    Client client;
    for (const char* path : {"", "/", "/a%20b/%41?q=http://x/#f"}) {
        client->Get(server.Url(path));
        ASSERT_TRUE(client.Await());
    }
    client->SetRequestHeader("X-One", "1");
    client->SetRequestHeader("accept", "");
    client->SendRequest("dElete", server.Host() + "/no-scheme");
    ASSERT_TRUE(client.Await());
    const std::string rest = " HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: " + host + "\r\n\r\n";
    EXPECT_THAT(server.Requests(), ElementsAre("GET /" + rest, "GET /" + rest, "GET /a%20b/%41?q=http://x/#f" + rest,
                                               "dElete /no-scheme HTTP/1.0\r\nAccept-Language: en\r\nHost: " + host +
                                                   "\r\nX-One: 1\r\n\r\n"));
}

TEST(HTTPRequest, GoesToTheDefaultPortWhateverTheScheme) {
    const ScriptedServer server({kOk});
    Client client;
    EXPECT_EQ(client->DefaultPort, 80);
    client->DefaultPort = server.Port();
    client->Get("https://127.0.0.1/x");
    ASSERT_TRUE(client.Await());
    EXPECT_THAT(client.Log, ElementsAre("connected", "headers 200", "page 200 https://127.0.0.1/x"));
    EXPECT_NE(server.Requests().at(0).find("\r\nHost: 127.0.0.1\r\n"), std::string::npos);
}

TEST(HTTPRequest, PostsFormsAndContentOnce) {
    const ScriptedServer server({kOk, kOk, kOk, kOk});
    const std::string head = "Accept: */*\r\nAccept-Language: en\r\nHost: " + server.Host().ToStd();
    Client client;
    const auto form = New<Dictionary>();
    form->Value("b", "1 2");
    form->Value("a", 3);
    client->SetFormData(form);
    client->Post(server.Url("/form"));
    ASSERT_TRUE(client.Await());
    // Content may come as late as this, and is bytes of any kind.
    const String bytes(std::string_view("\0\xE4\r\n", 4), Encodings::WindowsLatin1);
    client->OnConnected = [&](HTTPSocket&) { client->SetPostContent(bytes, ""); };
    client->SendRequest("post", server.Url("/bytes"));
    ASSERT_TRUE(client.Await());
    client->Get(server.Url("/get"));
    ASSERT_TRUE(client.Await());
    client->OnConnected = nullptr;
    client->Post(server.Url("/empty"));
    ASSERT_TRUE(client.Await());
    EXPECT_THAT(
        server.Requests(),
        ElementsAre("POST /form HTTP/1.0\r\n" + head +
                        "\r\nContent-type: application/x-www-form-urlencoded\r\nContent-length: 9\r\n\r\nb=1+2&a=3",
                    "post /bytes HTTP/1.0\r\n" + head + "\r\nContent-type: \r\nContent-length: 4\r\n\r\n" +
                        std::string("\0\xE4\r\n", 4),
                    "GET /get HTTP/1.0\r\n" + head + "\r\n\r\n",
                    "POST /empty HTTP/1.0\r\n" + head + "\r\nContent-type: \r\nContent-length: 0\r\n\r\n"));
}

TEST(HTTPRequest, EncodesForms) {
    EXPECT_EQ(encoded("a", ""), "a=");
    EXPECT_EQ(encoded("%&=,/\\][{}`~-_()*^$#!+;<>\r\n", " "),
              "%25%26%3D%2C%2F%5C%5D%5B%7B%7D%60%7E%2D%5F%28%29%2A%5E%24%23%21%2B%3B%3C%3E%0D%0A=+");
    EXPECT_EQ(encoded("A.:?@'\"|\t", "\xC3\xA4\xFF"), "A.:?@'\"|\t=\xC3\xA4\xFF");
    EXPECT_EQ(New<HTTPSocket>()->EncodeFormData(New<Dictionary>()).ToStd(), "");
    EXPECT_THROW(New<HTTPSocket>()->EncodeFormData(Nil), NilObjectException);
}

TEST(HTTPRequest, GoesThroughAProxyWithTheWholeUrl) {
    const ScriptedServer proxy({kOk, kOk});
    Client client;
    client->HTTPProxyAddress = "127.0.0.1";
    client->HTTPProxyPort = proxy.Port();
    client->Get("http://nowhere.invalid:8080/page?x");
    ASSERT_TRUE(client.Await());
    client->HTTPProxyPort = 0;
    client->DefaultPort = proxy.Port();
    client->GetHeaders("nowhere.invalid", 5);
    const std::string head = " HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: nowhere.invalid";
    EXPECT_THAT(proxy.Requests(), ElementsAre("GET http://nowhere.invalid:8080/page?x" + head + ":8080\r\n\r\n",
                                              "HEAD nowhere.invalid" + head + "\r\n\r\n"));
}

TEST(HTTPRequest, IsNotSentWhereItsHeadWouldBreak) {
    const TemporaryFolder folder;
    const auto file = New<FolderItem>(String(folder.Put("file", "kept")));
    std::string sent;
    std::vector<ScriptedServer::Part> parts(6, [&](ScriptedServer::Peer& peer) { sent += peer.Receive(1); });
    const ScriptedServer server(parts);
    Client client;
    client->HTTPProxyPort = server.Port();
    for (const std::string_view bad : {" "sv, "\t"sv, "\n"sv, "\r\nX: y"sv, "\x7F"sv, "\0"sv}) {
        client->HTTPProxyAddress = client->HTTPProxyAddress.IsEmpty() ? "127.0.0.1" : "";
        const String url(server.Url("/a").ToStd() + std::string(bad) + "b");
        client->Get(url, file);
        EXPECT_EQ(client->ErrorCode(), 0) << "as all errors of a connection it comes later";
        ASSERT_TRUE(client.Await());
        EXPECT_EQ(client.Log.back(), "error 103");
        EXPECT_EQ(client->Get(url, 5).Bytes(), "");
        EXPECT_EQ(client->ErrorCode(), SocketCore::NameNotResolved);
    }
    EXPECT_EQ(readFile(folder.Path("file")), "kept");

    client->HTTPProxyAddress = "";
    client->SetRequestHeader("X", "blanks are no harm");
    const std::pair<String, String> headers[] = {{"X", "a\r\nY: b"}, {"Y\r\nZ", "a"}, {"Y Z", "a"}, {"Y", "\x7F"}};
    for (const auto& [name, value] : headers) {
        client->SetRequestHeader(name, value);
        client->Get(server.Url());
        ASSERT_TRUE(client.Await());
        EXPECT_EQ(client.Log.back(), "error 4");
        client->SetRequestHeader(name, "");
    }
    client->SendRequest("GET / HTTP/1.0\r\n\r\nGET", server.Url());
    ASSERT_TRUE(client.Await());
    client->SetPostContent("", "text/plain\nX: y");
    EXPECT_EQ(client->Post(server.Url(), 5).Bytes(), "");
    EXPECT_EQ(client->ErrorCode(), HTTPSocket::UnfitHead);
    EXPECT_EQ(sent, "");
}

TEST(HTTPRequest, AFailedConnectionIsAnError) {
    Client client;
    const std::string nobody = "127.0.0.1:" + std::to_string(UnusedPort());
    client->Get(String(nobody));
    ASSERT_TRUE(client.Await());
    client->Get("http:///no-host");
    EXPECT_EQ(client->ErrorCode(), 0);
    ASSERT_TRUE(client.Await());
    EXPECT_THAT(client.Log, ElementsAre("error 101", "error 103"));
    EXPECT_EQ(client->Get(String(nobody), 5).ToStd(), "");
    EXPECT_EQ(client->ErrorCode(), SocketCore::ConnectFailed);
    EXPECT_EQ(client.Log.size(), 2U) << "a waiting form raises no event";
}
