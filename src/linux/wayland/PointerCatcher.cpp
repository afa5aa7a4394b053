#include "linux/wayland/PointerCatcher.h"

#include <sys/mman.h>
#include <unistd.h>
#include <viewporter-client.h>
#include <wayland-client.h>

namespace lumora {

namespace {

constexpr int pixelBytes = 4;

/// One transparent pixel, to be stretched; null without memory for it.
WaylandPtr<wl_buffer> transparentPixel(wl_shm* memory) {
    const int file = memfd_create("lumora-nothing", MFD_CLOEXEC);
    if (file < 0)
        return nullptr;
    WaylandPtr<wl_buffer> pixel;
    // What is new in a file is zero, which is transparent.
    if (ftruncate(file, pixelBytes) == 0) {
        wl_shm_pool* const pool = wl_shm_create_pool(memory, file, pixelBytes);
        pixel.reset(wl_shm_pool_create_buffer(pool, 0, 1, 1, pixelBytes, WL_SHM_FORMAT_ARGB8888));
        wl_shm_pool_destroy(pool);
    }
    ::close(file);
    return pixel;
}

} // namespace

PointerCatcher::PointerCatcher(const WaylandGlobals& globals, QScreen* screen, wl_output* output)
    : m_globals(globals)
    , m_screen(screen)
    , m_surface(wl_compositor_create_surface(globals.compositor()))
    , m_viewport(wp_viewporter_get_viewport(globals.viewporter(), m_surface.get()))
    , m_nothing(transparentPixel(globals.memory()))
    , m_layer(
          globals.layerShell(), m_surface.get(), output, LayerSurface::Extent::WholeScreen,
          // Without its screen it is of no use, and the panel goes with that as well.
          {.configured = [this](const QSize& size) { appear(size); }, .closed = [] {}}) {
    m_layer.setWelcomesKeyboard(true);
    wl_surface_commit(m_surface.get());
}

bool PointerCatcher::isPossible(const WaylandGlobals& globals) {
    return globals.compositor() && globals.memory() && globals.viewporter();
}

void PointerCatcher::spare(const QRegion& area) {
    if (!m_screen)
        return;
    const QRect screen = m_screen->geometry();
    const QRegion caught = (QRegion(screen) - area).translated(-screen.topLeft());
    const WaylandPtr<wl_region> region(wl_compositor_create_region(m_globals.compositor()));
    for (const QRect& part : caught)
        wl_region_add(region.get(), part.x(), part.y(), part.width(), part.height());
    wl_surface_set_input_region(m_surface.get(), region.get());
    m_layer.setWelcomesKeyboard(false); // the panel has it from now on
    wl_surface_commit(m_surface.get());
}

void PointerCatcher::appear(const QSize& size) {
    if (size.isEmpty())
        return; // to nothing it cannot be stretched
    wp_viewport_set_destination(m_viewport.get(), size.width(), size.height());
    wl_surface_attach(m_surface.get(), m_nothing.get(), 0, 0);
    wl_surface_commit(m_surface.get());
}

} // namespace lumora
