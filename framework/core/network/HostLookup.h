// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/socket.h>

#include <memory>
#include <string>
#include <vector>

namespace framework {

/// An address and port as the operating system takes it.
struct SocketAddress {
    sockaddr_storage bytes;
    socklen_t size;
};

/// Finds the addresses of a host without holding up the program. A written-out address is found at once; a name is
/// looked up by a system thread that shares nothing with the program but the place for the answer. Dropping this
/// forgets the answer.
class HostLookup {
  public:
    HostLookup(const std::string& host, int port);

    /// A descriptor that can be read from once the lookup is over; -1 when the system has none left. Then names are not
    /// looked up, and the lookup is over at once.
    int SignalDescriptor() const;
    bool IsOver() const;
    /// The addresses, best first, none when the host is not known. After the lookup is over.
    std::vector<SocketAddress> Addresses() const;

  private:
    struct Answer;
    std::shared_ptr<Answer> answer_;
};

}  // namespace framework
