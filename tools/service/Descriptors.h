// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <span>
#include <string_view>
#include <vector>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// Descriptors that travel with one message at most; the system takes a few more.
inline constexpr std::size_t mostDescriptors = 64;

/// Sends bytes, some at least, with open descriptors beside the first of them. The count of bytes that went, or -1 with
/// errno; never ends the process.
ssize_t sendWith(int socket, std::string_view bytes, std::span<const int> descriptors);

/// Receives bytes that are there, or waits for some, and appends the descriptors that came with them. The count of
/// bytes, 0 at the end of the conversation, -1 with errno.
ssize_t receiveWith(int socket, std::span<char> bytes, std::vector<base::Descriptor>& descriptors);

}  // namespace marrowbeck::tools
