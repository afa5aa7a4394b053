#pragma once

#include "linux/wayland/WaylandGlobals.h"
#include "linux/wayland/compositor/FakeCompositor.h"

#include <wayland-client.h>

namespace lumora::tests {

/// A connection to a compositor, as the toolkit would have it.
class WaylandGuest {
public:
    explicit WaylandGuest(FakeCompositor& compositor)
        : m_display(wl_display_connect_to_fd(compositor.connect())) {}

    ~WaylandGuest() { wl_display_disconnect(m_display); }

    WaylandGuest(const WaylandGuest&) = delete;
    WaylandGuest& operator=(const WaylandGuest&) = delete;

    wl_display* display() const { return m_display; }

    /// Hands out what the compositor has said until it has heard everything. False: it has had
    /// enough of this guest.
    [[nodiscard]] bool goesOn() const { return wl_display_roundtrip(m_display) >= 0; }

private:
    wl_display* m_display;
};

} // namespace lumora::tests
