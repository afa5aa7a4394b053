#pragma once

#include "linux/wayland/LayerPlacement.h"
#include "linux/wayland/WaylandObjects.h"

#include <QSize>

#include <functional>

namespace lumora {

/// A surface's place in the layer in front of all others. What is asked for counts with the next
/// commit of the surface.
class LayerSurface {
public:
    struct Events {
        /// The surface may have as many points; from now on something may be shown on it.
        std::function<void(const QSize& size)> configured;
        std::function<void()> closed; ///< the compositor does not show the surface any longer
    };

    /// What a surface covers until it is placed.
    enum class Extent { WholeScreen, WhatBarsLeave };

    /// `surface` has no role yet and outlives this.
    LayerSurface(
        zwlr_layer_shell_v1* shell, wl_surface* surface, wl_output* output, Extent extent,
        Events events);
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    /// Puts the surface to a place in what bars leave free.
    void place(const LayerPlacement& placement);

    /// Whether the surface is behind the others in the layer, but in front of windows still. Some
    /// compositors have what is newer behind what is older.
    void setBehind(bool behind);

    /// Commits `surface`, which is this one's, for the first time, and waits for the compositor's
    /// word that something may be shown on it: a moment, and never long. Nothing else is handed out
    /// meanwhile.
    void commitAndAwait(wl_display* display, wl_surface* surface);

    /// Whether the surface would take the keys if the user turned to it. Compositors that look
    /// where the user is when somebody may have the keyboard find the pointer over the surface by
    /// that.
    void setWelcomesKeyboard(bool welcome);

    /// All keys go to the surface while it is shown.
    void takeKeyboard();

private:
    Events m_events;
    bool m_isConfigured = false;
    WaylandPtr<zwlr_layer_surface_v1> m_layer;
};

} // namespace lumora
