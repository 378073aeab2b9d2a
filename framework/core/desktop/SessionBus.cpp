// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/SessionBus.h"

#include <gio/gio.h>
#include <poll.h>
#include <sys/socket.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace framework {
namespace {

/// How long the bus may take for the first word, in milliseconds. It answers within one where it answers at all.
constexpr int kPatience = 1000;

constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Where the bus is; empty when it would have to be looked for, or started.
std::string address() {
    if (const char* const given = std::getenv(kVariable)) return given;
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (!folder) return {};
    char* const escaped = g_dbus_address_escape_value(folder);
    std::string path = "unix:path=" + std::string(escaped) + "/bus";
    g_free(escaped);
    return path;
}

/// Whether who listens at the socket says anything to the beginning of a conversation.
bool answers(int socket) {
    constexpr std::string_view kBeginning("\0AUTH\r\n", 7);
    if (send(socket, kBeginning.data(), kBeginning.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0) return false;
    pollfd answer{socket, POLLIN, 0};
    return poll(&answer, 1, kPatience) > 0;
}

}  // namespace

void internal::DoWithoutSilentSessionBus() {
    const std::string bus = address();
    if (bus.empty()) return;
    const std::unique_ptr<GIOStream, Unref> stream(
        g_dbus_address_get_stream_sync(bus.c_str(), nullptr, nullptr, nullptr));
    // Nobody listens, which shows to everybody at once.
    if (!stream || !G_IS_SOCKET_CONNECTION(stream.get())) return;
    GSocket* const socket = g_socket_connection_get_socket(G_SOCKET_CONNECTION(stream.get()));
    // An address of no kind: without any, another bus would be looked for.
    if (!answers(g_socket_get_fd(socket))) setenv(kVariable, "none:", 1);
}

}  // namespace framework
