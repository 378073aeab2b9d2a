// SPDX-License-Identifier: GPL-2.0-or-later
// Against the servers of others.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <filesystem>

#include "tests/net/Client.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

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

TEST(HTTPServers, NginxAcceptsTheAnswerToItsChallenge) {
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
