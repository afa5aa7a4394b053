#pragma once

#include "linux/wayland/WaylandObjects.h"

#include <cstdint>

namespace lumora {

class WaylandGlobals;

/// The usual arrow of the user's pointers, for surfaces of which the toolkit knows nothing. Without
/// it a pointer that comes from a button would stay a hand.
class ArrowPointer {
public:
    /// `globals` outlive it.
    explicit ArrowPointer(const WaylandGlobals& globals)
        : m_globals(globals) {}

    /// Shows `pointer` as an arrow as long as it is over the surface that it entered with the event
    /// called `serial`, drawn with `scale` device pixels per point. It stays what it is where the
    /// user has no arrow.
    void show(wl_pointer* pointer, std::uint32_t serial, int scale);

private:
    void draw(int scale);

    const WaylandGlobals& m_globals;
    WaylandPtr<wl_cursor_theme> m_theme;
    WaylandPtr<wl_surface> m_surface; ///< with the arrow; null without one
    int m_scale = 0;                  ///< of what is drawn; 0: nothing yet
    int m_left = 0;                   ///< the arrow's tip, in points
    int m_top = 0;
};

} // namespace lumora
