#include "linux/wayland/LayerSurface.h"

#include <QDeadlineTimer>

#include <layer-shell-client.h>
#include <wayland-client.h>

#include <chrono>
#include <utility>

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// A compositor that has not answered by then has other worries than where a menu is.
constexpr auto configurationPatience = 1s;

/// By which a compositor's rules know the program's surfaces.
constexpr char scope[] = "lumora";

constexpr int belowBars = 0;
constexpr int overBars = -1;

} // namespace

LayerSurface::LayerSurface(
    zwlr_layer_shell_v1* shell, wl_surface* surface, wl_output* output, Extent extent,
    Events events)
    : m_events(std::move(events))
    , m_layer(zwlr_layer_shell_v1_get_layer_surface(
          shell, surface, output, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, scope)) {
    static const zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void* self, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
               std::uint32_t height) {
                zwlr_layer_surface_v1_ack_configure(layer, serial);
                auto* const place = static_cast<LayerSurface*>(self);
                place->m_isConfigured = true;
                // Copied, because it may end this object.
                const auto configured = place->m_events.configured;
                configured(QSize(int(width), int(height)));
            },
        .closed =
            [](void* self, zwlr_layer_surface_v1*) {
                const auto closed = static_cast<LayerSurface*>(self)->m_events.closed;
                closed();
            },
    };
    zwlr_layer_surface_v1_add_listener(m_layer.get(), &listener, this);
    zwlr_layer_surface_v1_set_anchor(
        m_layer.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                           ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_exclusive_zone(
        m_layer.get(), extent == Extent::WholeScreen ? overBars : belowBars);
}

void LayerSurface::place(const LayerPlacement& placement) {
    const bool left = placement.horizontal == LayerPlacement::Horizontal::Left;
    const bool top = placement.vertical == LayerPlacement::Vertical::Top;
    const QSize& margin = placement.margin;
    zwlr_layer_surface_v1_set_anchor(
        m_layer.get(),
        (left ? ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT : ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT) |
            (top ? ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP : ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM));
    zwlr_layer_surface_v1_set_size(
        m_layer.get(), std::uint32_t(placement.size.width()),
        std::uint32_t(placement.size.height()));
    // Those of the other edges do not count.
    zwlr_layer_surface_v1_set_margin(
        m_layer.get(), margin.height(), margin.width(), margin.height(), margin.width());
}

void LayerSurface::setBehind(bool behind) {
    if (zwlr_layer_surface_v1_get_version(m_layer.get()) <
        ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION)
        return;
    zwlr_layer_surface_v1_set_layer(
        m_layer.get(), behind ? ZWLR_LAYER_SHELL_V1_LAYER_TOP : ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY);
}

// To which queue an event goes is decided when it is read, and the toolkit reads in a thread of its
// own: nothing may be on its way before there is this one. Some compositors answer other things
// first.
void LayerSurface::commitAndAwait(wl_display* display, wl_surface* surface) {
    auto* const layer = reinterpret_cast<wl_proxy*>(m_layer.get());
    wl_event_queue* const ours = wl_display_create_queue(display);
    wl_proxy_set_queue(layer, ours);
    wl_surface_commit(surface);
    const QDeadlineTimer patience(configurationPatience);
    while (!m_isConfigured && !patience.hasExpired() &&
           wl_display_roundtrip_queue(display, ours) >= 0) {
    }
    wl_proxy_set_queue(layer, nullptr);
    wl_event_queue_destroy(ours);
}

void LayerSurface::setWelcomesKeyboard(bool welcome) {
    if (zwlr_layer_surface_v1_get_version(m_layer.get()) <
        ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND_SINCE_VERSION)
        return;
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        m_layer.get(), welcome ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND
                               : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
}

// Giving them to whoever is in front is in all versions. The gentler way of the fourth leaves them,
// with some compositors, to the window below until the first click.
void LayerSurface::takeKeyboard() {
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        m_layer.get(), ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
}

} // namespace lumora
