#pragma once

#include "linux/wayland/WaylandInput.h"

#include <cstdint>
#include <string_view>

namespace lumora {

/// What a compositor offers, as far as the program wants it. It is known a moment after the first
/// turn of the event loop; until then, and where the compositor does not offer it, it is null.
class WaylandGlobals {
public:
    /// `display` is the application's connection, whose events somebody hands out.
    WaylandGlobals(wl_display* display, WaylandInput::Events events);
    WaylandGlobals(const WaylandGlobals&) = delete;
    WaylandGlobals& operator=(const WaylandGlobals&) = delete;

    wl_compositor* compositor() const { return m_compositor.get(); }

    wl_shm* memory() const { return m_memory.get(); }

    wp_viewporter* viewporter() const { return m_viewporter.get(); }

    zwlr_layer_shell_v1* layerShell() const { return m_layerShell.get(); }

    xdg_activation_v1* activation() const { return m_activation.get(); }

    /// Whether surfaces hear of scales between whole numbers.
    bool hasFractionalScales() const { return m_hasFractionalScales; }

    const WaylandInput& input() const { return m_input; }

private:
    void add(std::uint32_t name, std::string_view interface, std::uint32_t version);

    WaylandInput m_input;
    WaylandPtr<wl_registry> m_registry;
    WaylandPtr<wl_compositor> m_compositor;
    WaylandPtr<wl_shm> m_memory;
    WaylandPtr<wp_viewporter> m_viewporter;
    WaylandPtr<zwlr_layer_shell_v1> m_layerShell;
    WaylandPtr<xdg_activation_v1> m_activation;
    bool m_hasFractionalScales = false;
};

/// Whether the compositor that a program started now would talk to has a layer in front of all
/// windows. It is asked over a connection of its own, and waited for.
[[nodiscard]] bool compositorHasLayers();

} // namespace lumora
