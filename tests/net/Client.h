// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

#include "net/HTTPSocket.h"
#include "tests/support/EventLoop.h"

namespace marrowbeck::test {

/// A socket that writes down what its events say, one line for each.
struct Client {
    Client() {
        socket->OnConnected = [this](HTTPSocket&) { Log.emplace_back("connected"); };
        socket->OnError = [this](HTTPSocket&, int code) { note("error " + std::to_string(code)); };
        socket->OnHeadersReceived = [this](HTTPSocket&, const Ref<InternetHeaders>&, int status) {
            note("headers " + std::to_string(status));
        };
        socket->OnReceiveProgress = [this](HTTPSocket&, int received, int total, const String& data) {
            Pieces += data.ToStd();
            Received = received;
            Total = total;
        };
        socket->OnPageReceived = [this](HTTPSocket&, const String& url, int status, const Ref<InternetHeaders>& headers,
                                        const String& content) {
            Headers = headers;
            Content = content.ToStd();
            note("page " + std::to_string(status) + " " + url.ToStd());
            ++Ends;
        };
        socket->OnDownloadComplete = [this](HTTPSocket&, const String& url, int status,
                                            const Ref<InternetHeaders>& headers, const Ref<FolderItem>& file) {
            Headers = headers;
            note("download " + std::to_string(status) + " " + url.ToStd() + " " + file->Name().ToStd());
            ++Ends;
        };
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    HTTPSocket* operator->() const { return socket.Get(); }
    /// Whether a page, a download or an error came.
    bool Await() {
        const int ends = Ends;
        return RunUntil([&] { return Ends > ends || socket->ErrorCode() != 0; });
    }

    Ref<HTTPSocket> socket = New<HTTPSocket>();
    std::vector<std::string> Log;
    std::string Content;
    Ref<InternetHeaders> Headers;
    std::string Pieces;
    int Received = -1;
    int Total = -1;
    int Ends = 0;

  private:
    void note(std::string line) { Log.push_back(std::move(line)); }
};

}  // namespace marrowbeck::test
