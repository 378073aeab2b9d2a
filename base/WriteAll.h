// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace base {

/// Writes all of `bytes`, waiting where it must. False, with errno, when that fails.
inline bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace base
