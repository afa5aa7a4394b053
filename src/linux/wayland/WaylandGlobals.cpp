#include "linux/wayland/WaylandGlobals.h"

#include <layer-shell-client.h>
#include <viewporter-client.h>
#include <wayland-client.h>
#include <xdg-activation-client.h>

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

/// The newest versions that this program knows.
constexpr std::uint32_t newestLayerShell = 4;
constexpr std::uint32_t newestCompositor = 3; // whose surfaces have a scale

template <typename Object>
WaylandPtr<Object> bound(
    wl_registry* registry, std::uint32_t name, const wl_interface& interface,
    std::uint32_t version) {
    return WaylandPtr<Object>(
        static_cast<Object*>(wl_registry_bind(registry, name, &interface, version)));
}

} // namespace

WaylandGlobals::WaylandGlobals(wl_display* display, WaylandInput::Events events)
    : m_input(std::move(events))
    , m_registry(wl_display_get_registry(display)) {
    static const wl_registry_listener listener{
        .global =
            [](void* globals, wl_registry*, std::uint32_t name, const char* interface,
               std::uint32_t version) {
                static_cast<WaylandGlobals*>(globals)->add(name, interface, version);
            },
        .global_remove =
            [](void* globals, wl_registry*, std::uint32_t name) {
                static_cast<WaylandGlobals*>(globals)->m_input.removeSeat(name);
            },
    };
    wl_registry_add_listener(m_registry.get(), &listener, this);
}

void WaylandGlobals::add(std::uint32_t name, std::string_view interface, std::uint32_t version) {
    wl_registry* const registry = m_registry.get();
    if (interface == wl_seat_interface.name)
        m_input.addSeat(registry, name, version);
    else if (interface == wl_compositor_interface.name)
        m_compositor = bound<wl_compositor>(
            registry, name, wl_compositor_interface, std::min(version, newestCompositor));
    else if (interface == wl_shm_interface.name)
        m_memory = bound<wl_shm>(registry, name, wl_shm_interface, 1);
    else if (interface == wp_viewporter_interface.name)
        m_viewporter = bound<wp_viewporter>(registry, name, wp_viewporter_interface, 1);
    else if (interface == "wp_fractional_scale_manager_v1")
        m_hasFractionalScales = true;
    else if (interface == xdg_activation_v1_interface.name)
        m_activation = bound<xdg_activation_v1>(registry, name, xdg_activation_v1_interface, 1);
    else if (interface == zwlr_layer_shell_v1_interface.name)
        m_layerShell = bound<zwlr_layer_shell_v1>(
            registry, name, zwlr_layer_shell_v1_interface, std::min(version, newestLayerShell));
}

bool compositorHasLayers() {
    wl_display* const display = wl_display_connect(nullptr);
    if (!display)
        return false;
    bool has = false;
    {
        const WaylandPtr<wl_registry> registry(wl_display_get_registry(display));
        static const wl_registry_listener listener{
            .global =
                [](void* found, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
                    if (std::string_view(interface) == zwlr_layer_shell_v1_interface.name)
                        *static_cast<bool*>(found) = true;
                },
            .global_remove = [](void*, wl_registry*, std::uint32_t) {},
        };
        wl_registry_add_listener(registry.get(), &listener, &has);
        wl_display_roundtrip(display);
    }
    wl_display_disconnect(display);
    return has;
}

} // namespace lumora
