#pragma once

#include "linux/wayland/LayerSurface.h"
#include "linux/wayland/WaylandGlobals.h"

#include <QPointer>
#include <QRegion>
#include <QScreen>

namespace lumora {

/// Something over the whole of a screen that nobody sees, bars included: pointers tell it where
/// they are, and presses go to it instead of to what is behind it.
class PointerCatcher {
public:
    /// `globals` outlive it and have what it takes; see `isPossible`.
    PointerCatcher(const WaylandGlobals& globals, QScreen* screen, wl_output* output);

    /// Whether the compositor offers what it takes.
    [[nodiscard]] static bool isPossible(const WaylandGlobals& globals);

    /// Leaves `area` of the desktop to what is shown there: compositors differ in which of two
    /// things in the same layer is in front. In points.
    void spare(const QRegion& area);

    bool is(const wl_surface* surface) const { return surface == m_surface.get(); }

    /// Null once the screen is gone.
    QScreen* screen() const { return m_screen; }

private:
    void appear(const QSize& size);

    const WaylandGlobals& m_globals;
    QPointer<QScreen> m_screen;
    WaylandPtr<wl_surface> m_surface;
    WaylandPtr<wp_viewport> m_viewport;
    WaylandPtr<wl_buffer> m_nothing;
    LayerSurface m_layer; ///< ends before its surface
};

} // namespace lumora
