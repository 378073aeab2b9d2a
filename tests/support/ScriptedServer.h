// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "base/Descriptor.h"
#include "framework/core/text/String.h"

namespace marrowbeck::test {

/// A server on loopback that plays one part for each connection, in order, on a thread of its own. After the last part
/// nobody answers any more. Its clients must be gone before it.
class ScriptedServer {
  public:
    /// The server's end of a connection, closed when the part is over.
    class Peer {
      public:
        Peer(ScriptedServer& server, int descriptor) : server_(server), descriptor_(descriptor) {}
        /// Reads a head and the body that it announces, and keeps both for Requests.
        void ReadRequest();
        /// The next bytes, as many as that or up to the end of the connection.
        std::string Receive(std::size_t size);
        void Send(std::string_view bytes) const;
        /// One byte at a time, each on its way before the next.
        void SendInBytes(std::string_view bytes, std::chrono::microseconds gap = std::chrono::microseconds(50)) const;
        /// Ends the connection as a crash would.
        void Reset();
        /// Waits for the other side to close.
        void AwaitClose() const;

      private:
        ScriptedServer& server_;
        base::Descriptor descriptor_;
    };
    using Part = std::function<void(Peer&)>;

    explicit ScriptedServer(std::vector<Part> parts);
    ~ScriptedServer();

    /// The part that most servers play: read the request, send this and close.
    static Part Answering(std::string answer);

    int Port() const { return port_; }
    framework::String Host() const { return framework::String("127.0.0.1:" + std::to_string(port_)); }
    framework::String Url(std::string_view path = "/") const;
    std::vector<std::string> Requests() const;

  private:
    void serve(const std::vector<Part>& parts);

    base::Descriptor listener_;
    int port_ = 0;
    mutable std::mutex lock_;
    std::vector<std::string> requests_;
    std::thread thread_;
};

/// A port of loopback on which nobody listens.
int UnusedPort();

}  // namespace marrowbeck::test
