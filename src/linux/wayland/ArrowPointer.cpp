#include "linux/wayland/ArrowPointer.h"

#include "linux/wayland/WaylandGlobals.h"

#include <QByteArray>

#include <wayland-client.h>
#include <wayland-cursor.h>

#include <utility>

namespace lumora {

namespace {

constexpr int usualSize = 24; // points

} // namespace

void ArrowPointer::show(wl_pointer* pointer, std::uint32_t serial, int scale) {
    if (wl_compositor_get_version(m_globals.compositor()) <
        WL_SURFACE_SET_BUFFER_SCALE_SINCE_VERSION)
        return;
    if (std::exchange(m_scale, scale) != scale)
        draw(scale);
    if (m_surface)
        wl_pointer_set_cursor(pointer, serial, m_surface.get(), m_left, m_top);
}

void ArrowPointer::draw(int scale) {
    bool isSet = false;
    const int size = qEnvironmentVariableIntValue("XCURSOR_SIZE", &isSet);
    const QByteArray theme = qgetenv("XCURSOR_THEME");
    m_surface.reset();
    m_theme.reset(wl_cursor_theme_load(
        theme.isEmpty() ? nullptr : theme.constData(),
        (isSet && size > 0 ? size : usualSize) * scale, m_globals.memory()));
    wl_cursor* const arrow =
        m_theme ? wl_cursor_theme_get_cursor(m_theme.get(), "left_ptr") : nullptr;
    if (!arrow || arrow->image_count == 0)
        return;
    wl_cursor_image* const image = arrow->images[0];
    m_left = int(image->hotspot_x) / scale;
    m_top = int(image->hotspot_y) / scale;
    m_surface.reset(wl_compositor_create_surface(m_globals.compositor()));
    wl_surface_set_buffer_scale(m_surface.get(), scale);
    wl_surface_attach(m_surface.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage(m_surface.get(), 0, 0, int(image->width), int(image->height));
    wl_surface_commit(m_surface.get());
}

} // namespace lumora
