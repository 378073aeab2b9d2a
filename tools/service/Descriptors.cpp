// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Descriptors.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace marrowbeck::tools {

namespace {

constexpr std::size_t controlBytes = CMSG_SPACE(mostDescriptors * sizeof(int));

}  // namespace

ssize_t sendWith(int socket, std::string_view bytes, std::span<const int> descriptors) {
    iovec part{const_cast<char*>(bytes.data()), bytes.size()};
    alignas(cmsghdr) std::array<char, controlBytes> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (!descriptors.empty()) {
        message.msg_control = control.data();
        message.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(descriptors.size_bytes());
        std::memcpy(CMSG_DATA(header), descriptors.data(), descriptors.size_bytes());
    }
    ssize_t count = 0;
    do {
        count = ::sendmsg(socket, &message, MSG_NOSIGNAL);
    } while (count < 0 && errno == EINTR);
    return count;
}

ssize_t receiveWith(int socket, std::span<char> bytes, std::vector<base::Descriptor>& descriptors) {
    iovec part{bytes.data(), bytes.size()};
    alignas(cmsghdr) std::array<char, controlBytes> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t count = 0;
    do {
        count = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (count < 0 && errno == EINTR);
    if (count < 0) return count;
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (header == nullptr || header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS) return count;
    for (std::size_t at = 0; at < header->cmsg_len - CMSG_LEN(0); at += sizeof(int)) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header) + at, sizeof descriptor);
        descriptors.emplace_back(descriptor);
    }
    return count;
}

}  // namespace marrowbeck::tools
