// SPDX-License-Identifier: GPL-2.0-or-later
// Against the servers of others, where they are installed.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QStandardPaths>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <random>

#include "tests/net/Client.h"
#include "tests/net/ScriptedServer.h"
#include "tests/support/TemporaryFolder.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

/// A command that runs as long as this lives.
class Service {
  public:
    explicit Service(const std::vector<std::string>& command) {
        std::vector<char*> arguments;
        for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        for (const int number : {STDOUT_FILENO, STDERR_FILENO}) {
            ::posix_spawn_file_actions_addopen(&actions, number, "/dev/null", O_WRONLY, 0);
        }
        if (::posix_spawnp(&process_, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) process_ = -1;
        ::posix_spawn_file_actions_destroy(&actions);
    }
    ~Service() {
        if (process_ < 0) return;
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// Whether it has begun to answer.
    static bool Answers(const String& url) {
        const auto socket = New<HTTPSocket>();
        // Nothing tells when it does: asked again and again.
        QTimer again;
        again.start(20);
        return RunUntil([&] {
            socket->GetHeaders(url, 2);
            return socket->HTTPStatusCode() != 0;
        });
    }

  private:
    pid_t process_ = -1;
};

std::string programOf(const char* name) {
    const QString found = QStandardPaths::findExecutable(name);
    return (found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin"}) : found).toStdString();
}

void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Bytes of all kinds that never repeat in step.
void writeMegabytes(const std::string& path, int count) {
    std::mt19937_64 random(1);
    std::vector<std::uint64_t> piece(1024 * 1024 / 8);
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < count; ++i) {
        for (std::uint64_t& word : piece) word = random();
        file.write(reinterpret_cast<const char*>(piece.data()), 1024 * 1024);
    }
}

bool sameFiles(const std::string& left, const std::string& right) {
    std::ifstream a(left, std::ios::binary);
    std::ifstream b(right, std::ios::binary);
    std::vector<char> one(1024 * 1024);
    std::vector<char> two(one.size());
    while (true) {
        const auto size = a.read(one.data(), static_cast<std::streamsize>(one.size())).gcount();
        if (b.read(two.data(), static_cast<std::streamsize>(two.size())).gcount() != size) return false;
        if (size == 0) return true;
        if (!std::equal(one.begin(), one.begin() + size, two.begin())) return false;
    }
}

String urlOf(int port, const std::string& path) {
    return String("http://127.0.0.1:" + std::to_string(port) + path);
}

}  // namespace

TEST(HTTPServers, PythonServesPagesAndAHundredMegabytes) {
    const std::string python = programOf("python3");
    ASSERT_FALSE(python.empty());
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("www"));
    write(folder.Path("www/page"), "line\r\n\r\nline");
    writeMegabytes(folder.Path("www/big"), 100);
    const int port = UnusedPort();
    const Service service(
        {python, "-m", "http.server", std::to_string(port), "--bind", "127.0.0.1", "--directory", folder.Path("www")});
    ASSERT_TRUE(Service::Answers(urlOf(port, "/page")));
    Client client;
    client->Get(urlOf(port, "/page"));
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client->HTTPStatusCode(), 200);
    EXPECT_EQ(client.Content, "line\r\n\r\nline");
    EXPECT_EQ(client->GetHeaders(urlOf(port, "/big"), 5)->Value("content-length").Bytes(), "104857600");
    client->Get(urlOf(port, "/none"), 5);
    EXPECT_EQ(client->HTTPStatusCode(), 404);

    client->OnReceiveProgress = nullptr;
    client->Get(urlOf(port, "/big"), New<FolderItem>(String(folder.Path("copy"))));
    for (int i = 0; i < 10 && client.Ends < 2; ++i) client.Await();
    EXPECT_EQ(client->HTTPStatusCode(), 200);
    EXPECT_TRUE(sameFiles(folder.Path("www/big"), folder.Path("copy")));
}

TEST(HTTPServers, NginxAcceptsTheAnswerToItsChallenge) {
    const std::string nginx = programOf("nginx");
    ASSERT_FALSE(nginx.empty());
    const TemporaryFolder folder;
    const int port = UnusedPort();
    std::filesystem::create_directory(folder.Path("www"));
    // The server's workers may run as another user.
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    write(folder.Path("www/page"), "behind the door");
    write(folder.Path("users"), "me:{PLAIN}a b#c\n");
    write(folder.Path("conf"),
          "daemon off; master_process off; pid " + folder.Path("pid") + "; error_log stderr;\n" +
              "events {}\nhttp { access_log off; client_body_temp_path " + folder.Path("t1") + "; proxy_temp_path " +
              folder.Path("t2") + "; fastcgi_temp_path " + folder.Path("t3") + "; uwsgi_temp_path " +
              folder.Path("t4") + "; scgi_temp_path " + folder.Path("t5") +
              ";\nserver { listen 127.0.0.1:" + std::to_string(port) + "; root " + folder.Path("www") +
              "; auth_basic \"the realm\"; auth_basic_user_file " + folder.Path("users") + "; } }\n");
    const Service service({nginx, "-p", folder.Path(), "-c", folder.Path("conf")});
    ASSERT_TRUE(Service::Answers(urlOf(port, "/page")));
    Client client;
    EXPECT_NE(client->Get(urlOf(port, "/page"), 5).ToStd().find("401 Authorization Required"), std::string::npos);
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
    client->Get(urlOf(port, "/page"));
    ASSERT_TRUE(client.Await());
    EXPECT_EQ(client.Content, "behind the door");
    EXPECT_EQ(realms, (std::vector<std::string>{"the realm", "the realm"}));
}
