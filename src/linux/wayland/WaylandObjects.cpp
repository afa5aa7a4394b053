#include "linux/wayland/WaylandObjects.h"

#include <layer-shell-client.h>
#include <viewporter-client.h>
#include <wayland-client.h>
#include <wayland-cursor.h>
#include <xdg-activation-client.h>

namespace lumora {

void WaylandDeleter::operator()(wl_buffer* object) const {
    wl_buffer_destroy(object);
}

void WaylandDeleter::operator()(wl_compositor* object) const {
    wl_compositor_destroy(object);
}

void WaylandDeleter::operator()(wl_cursor_theme* object) const {
    wl_cursor_theme_destroy(object);
}

void WaylandDeleter::operator()(wl_keyboard* object) const {
    if (wl_keyboard_get_version(object) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(object);
    else
        wl_keyboard_destroy(object); // the compositor goes on, unheard
}

void WaylandDeleter::operator()(wl_pointer* object) const {
    if (wl_pointer_get_version(object) >= WL_POINTER_RELEASE_SINCE_VERSION)
        wl_pointer_release(object);
    else
        wl_pointer_destroy(object); // the compositor goes on, unheard
}

void WaylandDeleter::operator()(wl_region* object) const {
    wl_region_destroy(object);
}

void WaylandDeleter::operator()(wl_registry* object) const {
    wl_registry_destroy(object);
}

void WaylandDeleter::operator()(wl_seat* object) const {
    wl_seat_destroy(object);
}

void WaylandDeleter::operator()(wl_shm* object) const {
    wl_shm_destroy(object);
}

void WaylandDeleter::operator()(wl_surface* object) const {
    wl_surface_destroy(object);
}

void WaylandDeleter::operator()(wl_touch* object) const {
    if (wl_touch_get_version(object) >= WL_TOUCH_RELEASE_SINCE_VERSION)
        wl_touch_release(object);
    else
        wl_touch_destroy(object); // the compositor goes on, unheard
}

void WaylandDeleter::operator()(wp_viewport* object) const {
    wp_viewport_destroy(object);
}

void WaylandDeleter::operator()(wp_viewporter* object) const {
    wp_viewporter_destroy(object);
}

void WaylandDeleter::operator()(xdg_activation_token_v1* object) const {
    xdg_activation_token_v1_destroy(object);
}

void WaylandDeleter::operator()(xdg_activation_v1* object) const {
    xdg_activation_v1_destroy(object);
}

void WaylandDeleter::operator()(zwlr_layer_shell_v1* object) const {
    // Older compositors know no end of it but the connection's.
    if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(object);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
}

void WaylandDeleter::operator()(zwlr_layer_surface_v1* object) const {
    zwlr_layer_surface_v1_destroy(object);
}

} // namespace lumora
