// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <filesystem>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;
using testing::ElementsAre;

namespace {

const auto kWelcome = ScriptedServer::Answering("HTTP/1.0 200 OK\r\n\r\nwelcome");

ScriptedServer::Part challenge(const std::string& header, int status = 401) {
    return ScriptedServer::Answering("HTTP/1.0 " + std::to_string(status) + " No\r\n" + header + "\r\n\r\nrefused");
}

/// The line of a request that begins with `name`, without that.
std::string lineOf(const std::string& request, const std::string& name) {
    const std::size_t begin = request.find("\r\n" + name + ": ");
    if (begin == std::string::npos) return {};
    const std::size_t value = begin + name.size() + 4;
    return request.substr(value, request.find("\r\n", value) - value);
}

/// What stands behind `name` and an equals sign in a header's value, with or without quotes.
std::string param(const std::string& header, const std::string& name) {
    const std::size_t begin = header.find(name + "=");
    if (begin == std::string::npos) return "absent";
    const std::size_t value = begin + name.size() + 1;
    if (header[value] != '"') return header.substr(value, header.find(',', value) - value);
    return header.substr(value + 1, header.find('"', value + 1) - value - 1);
}

std::string md5(const std::string& text) {
    return QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Md5).toHex().toStdString();
}

/// A client whose handlers answer each challenge with the same name and password, a number of times.
struct Caller : Client {
    Caller() {
        const auto answer = [this](HTTPSocket&, const String& realm, const Ref<InternetHeaders>& headers, String& name,
                                   String& password) {
            Realms.push_back(realm.ToStd());
            EXPECT_TRUE(headers);
            EXPECT_TRUE(name.IsEmpty() && password.IsEmpty());
            name = Name;
            password = "secret";
            return Answers-- > 0;
        };
        socket->OnAuthenticationRequired = answer;
        socket->OnProxyAuthenticationRequired = answer;
    }
    std::vector<std::string> Realms;
    String Name = "me";
    int Answers = 1;
};

/// Whether the server has begun to answer.
bool answers(const String& url) {
    const auto socket = New<HTTPSocket>();
    // Nothing tells when it does: asked again and again.
    QTimer again;
    again.start(20);
    return RunUntil([&] {
        socket->GetHeaders(url, 2);
        return socket->HTTPStatusCode() != 0;
    });
}

}  // namespace

TEST(HTTPAuthentication, AnswersBasicOnceAndForgets) {
    const ScriptedServer server({challenge("WWW-Authenticate: Basic realm=\"a\""), kWelcome, kWelcome});
    Caller client;
    client->SetFormData(New<Dictionary>(std::initializer_list<std::pair<Variant, Variant>>{{"k", "v"}}));
    client->Post(server.Url("/x"));
    ASSERT_TRUE(client.Await());
    EXPECT_THAT(client.Realms, ElementsAre("a"));
    EXPECT_THAT(client.Log,
                ElementsAre("connected", "connected", "headers 200", "page 200 " + server.Url("/x").ToStd()));
    EXPECT_EQ(client.Content, "welcome");
    client->Post(server.Url("/y"));
    ASSERT_TRUE(client.Await());
    const auto requests = server.Requests();
    EXPECT_EQ(lineOf(requests.at(0), "Authorization"), "");
    EXPECT_EQ(lineOf(requests.at(1), "Authorization"), "Basic bWU6c2VjcmV0");
    EXPECT_EQ(lineOf(requests.at(2), "Authorization"), "");
    EXPECT_EQ(client->requestHeaders->NameCount("Authorization"), 0);
    for (const auto& request : requests) EXPECT_EQ(request.substr(request.size() - 7), "\r\n\r\nk=v");
}

TEST(HTTPAuthentication, LongCredentialsKeepTheirLineBreak) {
    const ScriptedServer server({challenge("WWW-Authenticate: basic realm=\"\""), kWelcome});
    Caller client;
    client.Name = String(std::string(60, 'n'));
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    const std::string request = server.Requests().at(1);
    const std::size_t begin = request.find("Authorization: Basic ") + 21;
    EXPECT_EQ(request.substr(begin + 76, 2), "\r\n");
    EXPECT_EQ(DecodeBase64(String(request.substr(begin, 92))).Bytes(), std::string(60, 'n') + ":secret");
}

TEST(HTTPAuthentication, AnswersDigestWithAHashThatCanBeRecomputed) {
    const std::string nonce = "dcd98b7102dd2f0e8b11d0f600bfb0c093";
    const auto first = challenge("WWW-Authenticate: Digest nonce=\"" + nonce + "\"");
    // A challenge without a nonce of its own is answered with the last one.
    const auto second = challenge("WWW-Authenticate: Digest realm=\"a\", nonce=\"other\"");
    const auto third = challenge("WWW-Authenticate: Digest opaque=\"given\"");
    const ScriptedServer server({first, second, third, kWelcome});
    Caller client;
    client.Answers = 3;
    client->SendRequest("put", server.Url("/x?y"));
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "welcome");
    EXPECT_THAT(client.Realms, ElementsAre("", "a\", nonce=\"other", ""));
    const auto requests = server.Requests();
    std::vector<std::string> clientNonces;
    const std::vector<std::string> realms = {"", "a\", nonce=\"other", ""};
    for (std::size_t i = 0; i < realms.size(); ++i) {
        const std::string header = lineOf(requests.at(i + 1), "Authorization");
        const std::string cnonce = param(header, "cnonce");
        const std::string uri = server.Url("/x?y").ToStd();
        const std::string response =
            md5(md5("me::secret") + ":" + nonce + ":00000001:" + cnonce + ":auth:" + md5("put:" + uri));
        EXPECT_EQ(header, "Digest username=\"me\", realm=\"" + realms[i] + "\", nonce=\"" + nonce + "\", uri=\"" + uri +
                              "\", qop=auth, nc=00000001, cnonce=\"" + cnonce + "\", response=\"" + response + "\", " +
                              (i == 2 ? "opaque=\"\"" : ""));
        EXPECT_EQ(cnonce.size(), 25U);
        EXPECT_EQ(cnonce.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"),
                  std::string::npos);
        EXPECT_THAT(clientNonces, testing::Not(testing::Contains(cnonce)));
        clientNonces.push_back(cnonce);
    }
}

TEST(HTTPAuthentication, WhatItCannotAnswerIsAPage) {
    const std::vector<std::string> headers{"WWW-Authenticate: Bearer realm=\"a\"", "WWW-Authenticate: Basic", "X: y",
                                           "WWW-Authenticate: Digest", "Proxy-Authenticate: Basic realm=\"a\""};
    std::vector<ScriptedServer::Part> parts;
    for (const std::string& header : headers) parts.push_back(challenge(header));
    parts.push_back(challenge("WWW-Authenticate: Basic realm=\"a\"", 403));
    const ScriptedServer server(parts);
    Caller client;
    client.Answers = 100;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        client->Get(server.Url());
        ASSERT_TRUE(client.Await());
        EXPECT_EQ(client.Content, "refused");
    }
    EXPECT_THAT(client.Realms, ElementsAre("a", "", "", "", "")) << "403 is no challenge";
    EXPECT_EQ(client.Ends, 6);
}

TEST(HTTPAuthentication, DoesNotSendCredentialsThatBreakTheHead) {
    const auto digest = challenge("WWW-Authenticate: Digest realm=\"a\"");
    std::string sent;
    const auto listen = [&](ScriptedServer::Peer& peer) { sent += peer.Receive(1); };
    const ScriptedServer server(
        {digest, listen, challenge("WWW-Authenticate: Digest realm=\"a\nX: y\""), listen, kWelcome});
    Caller client;
    client.Name = "me\r\nX: y";
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Log.back(), "error 4");
    client.Name = "me";
    client.Answers = 1;
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Log.back(), "error 4");
    EXPECT_EQ(sent, "");
    client->Get(server.Url());
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "welcome");
    EXPECT_EQ(lineOf(server.Requests().back(), "Authorization"), "") << "nothing is left of them";
}

TEST(HTTPAuthentication, AnswersAProxyOnItsOwnLine) {
    const ScriptedServer proxy({challenge("Proxy-Authenticate: Basic realm=\"p\"", 407), kWelcome});
    Caller client;
    client->HTTPProxyAddress = "127.0.0.1";
    client->HTTPProxyPort = proxy.Port();
    client->Get("http://nowhere.invalid/");
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "welcome");
    const std::string request = proxy.Requests().at(1);
    EXPECT_EQ(lineOf(request, "Proxy-Authorization"), "Basic bWU6c2VjcmV0");
    EXPECT_EQ(lineOf(request, "Authorization"), "");
    EXPECT_EQ(client->requestHeaders->NameCount("Proxy-Authorization"), 0);
}

TEST(HTTPAuthentication, NginxAcceptsTheAnswerToItsChallenge) {
    const QString nginx = QStandardPaths::findExecutable("nginx", {"/usr/sbin", "/usr/local/sbin", "/usr/bin"});
    ASSERT_FALSE(nginx.isEmpty());
    const TemporaryFolder folder;
    const int port = UnusedPort();
    std::filesystem::create_directory(folder.Path("www"));
    // The server's workers may run as another user.
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    folder.Put("www/page", "behind the door");
    folder.Put("users", "me:{PLAIN}a b#c\n");
    folder.Put("conf", "daemon off; master_process off; pid " + folder.Path("pid") + "; error_log stderr;\n" +
                           "events {}\nhttp { access_log off; client_body_temp_path " + folder.Path("t1") +
                           "; proxy_temp_path " + folder.Path("t2") + "; fastcgi_temp_path " + folder.Path("t3") +
                           "; uwsgi_temp_path " + folder.Path("t4") + "; scgi_temp_path " + folder.Path("t5") +
                           ";\nserver { listen 127.0.0.1:" + std::to_string(port) + "; root " + folder.Path("www") +
                           "; auth_basic \"the realm\"; auth_basic_user_file " + folder.Path("users") + "; } }\n");
    const String url = String("http://127.0.0.1:" + std::to_string(port) + "/page");
    QProcess service;
    service.start(nginx, {"-p", QString::fromStdString(folder.Path()), "-c", "conf"});
    ASSERT_TRUE(answers(url));
    Client client;
    EXPECT_NE(client->Get(url, 5).ToStd().find("401 Authorization Required"), std::string::npos);
    std::vector<std::string> realms;
    std::vector<String> passwords{"a b#c", "wrong"};
    client->OnAuthenticationRequired = [&](HTTPSocket&, const String& realm, const Ref<InternetHeaders>&, String& name,
                                           String& password) {
        realms.push_back(realm.ToStd());
        if (passwords.empty()) return false;
        name = "me";
        password = passwords.back();
        passwords.pop_back();
        return true;
    };
    client->Get(url);
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "behind the door");
    EXPECT_EQ(realms, (std::vector<std::string>{"the realm", "the realm"}));
    service.terminate();
    service.waitForFinished();
}
