#pragma once

#include <memory>

struct wl_buffer;
struct wl_compositor;
struct wl_cursor_theme;
struct wl_display;
struct wl_keyboard;
struct wl_output;
struct wl_pointer;
struct wl_region;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_surface;
struct wl_touch;
struct wp_viewport;
struct wp_viewporter;
struct xdg_activation_token_v1;
struct xdg_activation_v1;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

namespace lumora {

/// Ends objects of the compositor's.
struct WaylandDeleter {
    void operator()(wl_buffer* object) const;
    void operator()(wl_compositor* object) const;
    void operator()(wl_cursor_theme* object) const;
    void operator()(wl_keyboard* object) const;
    void operator()(wl_pointer* object) const;
    void operator()(wl_region* object) const;
    void operator()(wl_registry* object) const;
    void operator()(wl_seat* object) const;
    void operator()(wl_shm* object) const;
    void operator()(wl_surface* object) const;
    void operator()(wl_touch* object) const;
    void operator()(wp_viewport* object) const;
    void operator()(wp_viewporter* object) const;
    void operator()(xdg_activation_token_v1* object) const;
    void operator()(xdg_activation_v1* object) const;
    void operator()(zwlr_layer_shell_v1* object) const;
    void operator()(zwlr_layer_surface_v1* object) const;
};

/// An object of the compositor's that ends with its owner.
template <typename Object>
using WaylandPtr = std::unique_ptr<Object, WaylandDeleter>;

} // namespace lumora
