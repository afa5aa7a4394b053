#pragma once

#include "linux/wayland/WaylandObjects.h"

#include <QPointF>

#include <cstdint>
#include <functional>
#include <vector>

namespace lumora {

/// What the user's pointers, fingers and keys do on surfaces of this program, those that the
/// toolkit knows nothing of included.
class WaylandInput {
public:
    /// A pointer has come to be over a surface.
    struct Entrance {
        wl_pointer* pointer;
        std::uint32_t serial; ///< of the event
        const wl_surface* surface;
        QPointF position; ///< in points from the surface's corner
    };

    /// What is told of it.
    struct Events {
        std::function<void(const Entrance& entrance)> entered;
        std::function<void(const wl_surface* surface)> pressed; ///< with a button or a finger
    };

    /// The last press, by which compositors know it again.
    struct Press {
        wl_seat* seat = nullptr; ///< null before the first
        std::uint32_t serial = 0;
    };

    explicit WaylandInput(Events events);
    ~WaylandInput();
    WaylandInput(const WaylandInput&) = delete;
    WaylandInput& operator=(const WaylandInput&) = delete;

    /// Listens to what belongs to the seat that the registry calls `name`, and has in `version`.
    void addSeat(wl_registry* registry, std::uint32_t name, std::uint32_t version);

    /// The seat is gone, if it was one.
    void removeSeat(std::uint32_t name);

    const Press& lastPress() const { return m_lastPress; }

private:
    class Seat;
    friend class Seat;

    Events m_events;
    std::vector<std::unique_ptr<Seat>> m_seats;
    Press m_lastPress;
};

} // namespace lumora
