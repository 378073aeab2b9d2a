// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/start/WaylandToken.h"

#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>
#include <xdg-activation-v1-client-protocol.h>

#include <QGuiApplication>
#include <QWindow>
#include <cstdint>
#include <memory>
#include <string_view>

namespace framework {
namespace {

template <auto Destroy>
struct DestroyBy {
    template <class Resource>
    void operator()(Resource* resource) const {
        Destroy(resource);
    }
};
template <class Resource, auto Destroy>
using Owned = std::unique_ptr<Resource, DestroyBy<Destroy>>;

/// The toolkit's connection to the compositor. The toolkit gives tokens to itself alone, and its public interface names
/// neither the connection nor the last input. This one, for those who port it, has been the same for many releases.
struct Connection {
    explicit Connection(QPlatformNativeInterface& toolkit)
        : display(static_cast<wl_display*>(toolkit.nativeResourceForIntegration("wl_display"))),
          seat(static_cast<wl_seat*>(toolkit.nativeResourceForIntegration("wl_seat"))),
          serial(static_cast<std::uint32_t>(
              reinterpret_cast<std::uintptr_t>(toolkit.nativeResourceForIntegration("serial")))) {
        QWindow* const window = QGuiApplication::focusWindow();
        if (window) surface = static_cast<wl_surface*>(toolkit.nativeResourceForWindow("surface", window));
    }

    wl_display* display;
    wl_seat* seat;
    std::uint32_t serial;
    wl_surface* surface = nullptr;
};

void noteGlobal(void* found, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t) {
    if (std::string_view(interface) == xdg_activation_v1_interface.name) *static_cast<std::uint32_t*>(found) = name;
}
void forgetGlobal(void*, wl_registry*, std::uint32_t) {}
constexpr wl_registry_listener kGlobals{noteGlobal, forgetGlobal};

void noteToken(void* token, xdg_activation_token_v1*, const char* text) {
    *static_cast<String*>(token) = text;
}
constexpr xdg_activation_token_v1_listener kAnswer{noteToken};

String ask(const Connection& connection) {
    // With events of its own, so that none of the toolkit's is served in between.
    const Owned<wl_event_queue, wl_event_queue_destroy> queue(wl_display_create_queue(connection.display));
    const Owned<void, wl_proxy_wrapper_destroy> wrapper(wl_proxy_create_wrapper(connection.display));
    wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper.get()), queue.get());
    const Owned<wl_registry, wl_registry_destroy> registry(
        wl_display_get_registry(static_cast<wl_display*>(wrapper.get())));
    std::uint32_t name = 0;
    wl_registry_add_listener(registry.get(), &kGlobals, &name);
    if (wl_display_roundtrip_queue(connection.display, queue.get()) < 0 || name == 0) return {};

    const Owned<xdg_activation_v1, xdg_activation_v1_destroy> activation(
        static_cast<xdg_activation_v1*>(wl_registry_bind(registry.get(), name, &xdg_activation_v1_interface, 1)));
    const Owned<xdg_activation_token_v1, xdg_activation_token_v1_destroy> request(
        xdg_activation_v1_get_activation_token(activation.get()));
    String token;
    xdg_activation_token_v1_add_listener(request.get(), &kAnswer, &token);
    xdg_activation_token_v1_set_serial(request.get(), connection.serial, connection.seat);
    if (connection.surface) xdg_activation_token_v1_set_surface(request.get(), connection.surface);
    xdg_activation_token_v1_commit(request.get());
    wl_display_roundtrip_queue(connection.display, queue.get());
    return token;
}

}  // namespace

String internal::WaylandActivationToken() {
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return {};
    const Connection connection(*QGuiApplication::platformNativeInterface());
    return connection.display && connection.seat ? ask(connection) : String();
}

}  // namespace framework
