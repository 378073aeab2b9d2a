// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/support/ScriptedServer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <array>
#include <cstdlib>
#include <utility>

using base::Descriptor;
using framework::String;

namespace marrowbeck::test {

namespace {

/// A socket bound to a free port of loopback, and that port.
std::pair<base::Descriptor, int> boundSocket() {
    base::Descriptor descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const general = reinterpret_cast<sockaddr*>(&address);
    if (::bind(descriptor.Number(), general, size) != 0) std::abort();
    ::getsockname(descriptor.Number(), general, &size);
    return {std::move(descriptor), ntohs(address.sin_port)};
}

}  // namespace

int UnusedPort() {
    return boundSocket().second;
}

void ScriptedServer::Peer::ReadRequest() {
    std::string request;
    std::size_t end = std::string::npos;
    std::array<char, 4096> piece;
    const auto receive = [&] {
        const ssize_t count = descriptor_.Read(piece.data(), piece.size());
        if (count > 0) request.append(piece.data(), static_cast<std::size_t>(count));
        return count > 0;
    };
    while ((end = request.find("\r\n\r\n")) == std::string::npos && receive()) continue;
    const std::string_view name = "\r\nContent-length: ";
    if (const std::size_t length = request.find(name); length < end) {
        const std::size_t size = end + 4 + std::strtoul(request.c_str() + length + name.size(), nullptr, 10);
        while (request.size() < size && receive()) continue;
    }
    const std::scoped_lock lock(server_.lock_);
    server_.requests_.push_back(request);
    // The test may be waiting for it.
    if (auto* const events = QCoreApplication::eventDispatcher()) events->wakeUp();
}

std::string ScriptedServer::Peer::Receive(std::size_t size) {
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

void ScriptedServer::Peer::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::send(descriptor_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void ScriptedServer::Peer::SendInBytes(std::string_view bytes, std::chrono::microseconds gap) const {
    const int on = 1;
    ::setsockopt(descriptor_.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    for (const char& byte : bytes) {
        Send({&byte, 1});
        std::this_thread::sleep_for(gap);
    }
}

void ScriptedServer::Peer::Reset() {
    const linger none{1, 0};
    ::setsockopt(descriptor_.Number(), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    descriptor_.Close();
}

void ScriptedServer::Peer::AwaitClose() const {
    char byte = 0;
    while (::recv(descriptor_.Number(), &byte, 1, 0) > 0) continue;
}

ScriptedServer::ScriptedServer(std::vector<Part> parts) {
    std::tie(listener_, port_) = boundSocket();
    ::listen(listener_.Number(), 16);
    thread_ = std::thread([this, parts = std::move(parts)] { serve(parts); });
}

ScriptedServer::~ScriptedServer() {
    ::shutdown(listener_.Number(), SHUT_RDWR);
    thread_.join();
}

void ScriptedServer::serve(const std::vector<Part>& parts) {
    for (const Part& part : parts) {
        const int descriptor = ::accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC);
        if (descriptor < 0) break;
        Peer peer(*this, descriptor);
        part(peer);
    }
    ::shutdown(listener_.Number(), SHUT_RDWR);
}

ScriptedServer::Part ScriptedServer::Answering(std::string answer) {
    return [answer = std::move(answer)](Peer& peer) {
        peer.ReadRequest();
        peer.Send(answer);
    };
}

String ScriptedServer::Url(std::string_view path) const {
    return String("http://127.0.0.1:" + std::to_string(port_) + std::string(path));
}

std::vector<std::string> ScriptedServer::Requests() const {
    const std::scoped_lock lock(lock_);
    return requests_;
}

}  // namespace marrowbeck::test
