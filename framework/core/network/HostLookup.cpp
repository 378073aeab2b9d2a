// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/network/HostLookup.h"

#include <netdb.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <system_error>
#include <thread>

#include "base/Descriptor.h"

namespace framework {

/// Written by the looking thread up to the signal, read by the program behind it.
struct HostLookup::Answer {
    std::vector<SocketAddress> addresses;
    base::Descriptor signal{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};

    void Find(const std::string& host, int port, int flags) {
        addrinfo hints{};
        hints.ai_socktype = SOCK_STREAM;
        hints.ai_flags = flags;
        addrinfo* found = nullptr;
        if (::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) return;
        for (const addrinfo* next = found; next; next = next->ai_next) {
            SocketAddress address{{}, next->ai_addrlen};
            std::memcpy(&address.bytes, next->ai_addr, next->ai_addrlen);
            addresses.push_back(address);
        }
        ::freeaddrinfo(found);
    }
    void Finish() {
        constexpr std::uint64_t kOne = 1;
        signal.Write({reinterpret_cast<const char*>(&kOne), sizeof kOne});
    }
};

HostLookup::HostLookup(const std::string& host, int port) : answer_(std::make_shared<Answer>()) {
    // The system would read a name up to its NUL only, and find another host.
    const bool isName = !host.empty() && host.find('\0') == std::string::npos;
    if (isName) answer_->Find(host, port, AI_NUMERICHOST | AI_NUMERICSERV);
    if (!answer_->signal.IsOpen()) return;
    if (!isName || !answer_->addresses.empty()) {
        answer_->Finish();
        return;
    }
    try {
        std::thread([answer = answer_, host, port] {
            answer->Find(host, port, AI_NUMERICSERV);
            answer->Finish();
        }).detach();
    } catch (const std::system_error&) {  // no more threads: nothing is found
        answer_->Finish();
    }
}

int HostLookup::SignalDescriptor() const {
    return answer_->signal.Number();
}

bool HostLookup::IsOver() const {
    if (!answer_->signal.IsOpen()) return true;
    pollfd signal{answer_->signal.Number(), POLLIN, 0};
    return ::poll(&signal, 1, 0) == 1;
}

std::vector<SocketAddress> HostLookup::Addresses() const {
    return IsOver() ? answer_->addresses : std::vector<SocketAddress>();
}

}  // namespace framework
