// SPDX-License-Identifier: GPL-2.0-or-later
// How fast a download of 1 GiB over loopback is beside curl, and how long the window would stand still meanwhile:
// bench_http [FOLDER]. The files are made in FOLDER, or in the system's place for temporary ones, and removed.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "net/HTTPSocket.h"
#include "tests/support/ScriptedServer.h"

namespace {

using namespace marrowbeck;
using marrowbeck::test::ScriptedServer;

constexpr int kMebibytes = 1024;
constexpr int kRounds = 3;

void serve(ScriptedServer::Peer& peer) {
    const std::string piece(1024 * 1024, 'x');
    peer.ReadRequest();
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: " + std::to_string(std::int64_t{kMebibytes} * 1024 * 1024) +
              "\r\n\r\n");
    for (int i = 0; i < kMebibytes; ++i) peer.Send(piece);
}

struct Result {
    double seconds = 1e9;
    double longestStall = 0;
};

Result downloadOurselves(const String& url, const std::string& path) {
    const auto socket = New<HTTPSocket>();
    bool complete = false;
    socket->OnDownloadComplete = [&complete](HTTPSocket&, const String&, int, const Ref<InternetHeaders>&,
                                             const Ref<FolderItem>&) { complete = true; };
    Result result;
    const double begin = Microseconds();
    double last = begin;
    socket->Get(url, New<FolderItem>(String(path)));
    while (!complete) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        const double now = Microseconds();
        result.longestStall = std::max(result.longestStall, now - last);
        last = now;
    }
    result.seconds = (Microseconds() - begin) / 1e6;
    return result;
}

Result downloadWithCurl(const String& url, const std::string& path) {
    std::string words[] = {"curl", "-s", "-o", path, url.ToStd()};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), words[4].data(), nullptr};
    const double begin = Microseconds();
    pid_t process = 0;
    if (::posix_spawnp(&process, "curl", nullptr, nullptr, arguments, environ) != 0) return {};
    ::waitpid(process, nullptr, 0);
    return {(Microseconds() - begin) / 1e6, 0};
}

Result better(const Result& left, const Result& right) {
    return {std::min(left.seconds, right.seconds), std::max(left.longestStall, right.longestStall)};
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const std::filesystem::path folder = argc > 1 ? argv[1] : std::filesystem::temp_directory_path();
    const std::string path = folder / ("bench_http-" + std::to_string(::getpid()));
    const ScriptedServer server(std::vector<ScriptedServer::Part>(2 * kRounds, serve));
    Result ours;
    Result curls;
    for (int round = 0; round < kRounds; ++round) {
        ours = better(ours, downloadOurselves(server.Url(), path));
        std::filesystem::remove(path);
        curls = better(curls, downloadWithCurl(server.Url(), path));
        if (!std::filesystem::remove(path)) std::printf("curl wrote nothing\n");
    }
    std::printf("%d MiB, best of %d: ours %.2f s (%.0f MiB/s), curl %.2f s (%.0f MiB/s), ratio %.2f\n", kMebibytes,
                kRounds, ours.seconds, kMebibytes / ours.seconds, curls.seconds, kMebibytes / curls.seconds,
                ours.seconds / curls.seconds);
    std::printf("longest turn of the event loop: %.1f ms\n", ours.longestStall / 1e3);
}
