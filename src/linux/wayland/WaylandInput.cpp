#include "linux/wayland/WaylandInput.h"

#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

/// Later ones have more events that are not wanted; this one's devices can be given back.
constexpr std::uint32_t newestSeat = 3;

} // namespace

class WaylandInput::Seat {
public:
    Seat(WaylandInput& input, wl_registry* registry, std::uint32_t name, std::uint32_t version)
        : m_input(input)
        , m_name(name)
        , m_seat(static_cast<wl_seat*>(wl_registry_bind(
              registry, name, &wl_seat_interface, std::min(version, newestSeat)))) {
        static const wl_seat_listener listener = [] {
            wl_seat_listener made{};
            made.capabilities = [](void* seat, wl_seat*, std::uint32_t capabilities) {
                static_cast<Seat*>(seat)->follow(capabilities);
            };
            made.name = [](void*, wl_seat*, const char*) {};
            return made;
        }();
        wl_seat_add_listener(m_seat.get(), &listener, this);
    }

    std::uint32_t name() const { return m_name; }

    const wl_seat* seat() const { return m_seat.get(); }

private:
    void follow(std::uint32_t capabilities) {
        const auto has = [capabilities](std::uint32_t one) { return (capabilities & one) != 0; };
        if (comes(m_pointer, has(WL_SEAT_CAPABILITY_POINTER), wl_seat_get_pointer))
            listenToPointer();
        if (comes(m_keyboard, has(WL_SEAT_CAPABILITY_KEYBOARD), wl_seat_get_keyboard))
            listenToKeyboard();
        if (comes(m_touch, has(WL_SEAT_CAPABILITY_TOUCH), wl_seat_get_touch))
            listenToTouch();
        if (!m_pointer)
            m_pointed = nullptr;
    }

    /// Has `device` as long as the seat `has` one: all of them are told when one of them comes or
    /// goes. Whether it is a new one.
    template <typename Device>
    bool comes(WaylandPtr<Device>& device, bool has, Device* (*get)(wl_seat*)) const {
        if (has == (device != nullptr))
            return false;
        device.reset(has ? get(m_seat.get()) : nullptr);
        return has;
    }

    void listenToPointer() {
        static const wl_pointer_listener listener = [] {
            wl_pointer_listener made{};
            made.enter = [](void* seat, wl_pointer* pointer, std::uint32_t serial,
                            wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
                static_cast<Seat*>(seat)->onEntered(
                    {.pointer = pointer,
                     .serial = serial,
                     .surface = surface,
                     .position = {wl_fixed_to_double(x), wl_fixed_to_double(y)}});
            };
            made.leave = [](void* seat, wl_pointer*, std::uint32_t, wl_surface*) {
                static_cast<Seat*>(seat)->m_pointed = nullptr;
            };
            made.motion = [](void*, wl_pointer*, std::uint32_t, wl_fixed_t, wl_fixed_t) {};
            made.button = [](void* seat, wl_pointer*, std::uint32_t serial, std::uint32_t,
                             std::uint32_t, std::uint32_t state) {
                if (state == WL_POINTER_BUTTON_STATE_PRESSED)
                    static_cast<Seat*>(seat)->onPressed(
                        serial, static_cast<Seat*>(seat)->m_pointed);
            };
            made.axis = [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {};
            return made;
        }();
        wl_pointer_add_listener(m_pointer.get(), &listener, this);
    }

    void listenToKeyboard() {
        static const wl_keyboard_listener listener = [] {
            wl_keyboard_listener made{};
            made.keymap = [](void*, wl_keyboard*, std::uint32_t, std::int32_t file, std::uint32_t) {
                ::close(file);
            };
            made.enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {};
            made.leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {};
            made.key = [](void* seat, wl_keyboard*, std::uint32_t serial, std::uint32_t,
                          std::uint32_t, std::uint32_t state) {
                if (state == WL_KEYBOARD_KEY_STATE_PRESSED)
                    static_cast<Seat*>(seat)->onPressed(serial, nullptr);
            };
            made.modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                                std::uint32_t, std::uint32_t) {};
            return made;
        }();
        wl_keyboard_add_listener(m_keyboard.get(), &listener, this);
    }

    void listenToTouch() {
        static const wl_touch_listener listener = [] {
            wl_touch_listener made{};
            made.down = [](void* seat, wl_touch*, std::uint32_t serial, std::uint32_t,
                           wl_surface* surface, std::int32_t, wl_fixed_t,
                           wl_fixed_t) { static_cast<Seat*>(seat)->onPressed(serial, surface); };
            made.up = [](void*, wl_touch*, std::uint32_t, std::uint32_t, std::int32_t) {};
            made.motion = [](void*, wl_touch*, std::uint32_t, std::int32_t, wl_fixed_t,
                             wl_fixed_t) {};
            made.frame = [](void*, wl_touch*) {};
            made.cancel = [](void*, wl_touch*) {};
            return made;
        }();
        wl_touch_add_listener(m_touch.get(), &listener, this);
    }

    void onEntered(const Entrance& entrance) {
        m_pointed = entrance.surface;
        if (entrance.surface)
            m_input.m_events.entered(entrance);
    }

    /// `surface` is null where it is not known.
    void onPressed(std::uint32_t serial, const wl_surface* surface) {
        m_input.m_lastPress = {.seat = m_seat.get(), .serial = serial};
        if (surface)
            m_input.m_events.pressed(surface);
    }

    WaylandInput& m_input;
    std::uint32_t m_name;
    WaylandPtr<wl_seat> m_seat;
    WaylandPtr<wl_pointer> m_pointer;
    WaylandPtr<wl_keyboard> m_keyboard;
    WaylandPtr<wl_touch> m_touch;
    const wl_surface* m_pointed = nullptr; ///< under the pointer
};

WaylandInput::WaylandInput(Events events)
    : m_events(std::move(events)) {}

WaylandInput::~WaylandInput() = default;

void WaylandInput::addSeat(wl_registry* registry, std::uint32_t name, std::uint32_t version) {
    m_seats.push_back(std::make_unique<Seat>(*this, registry, name, version));
}

void WaylandInput::removeSeat(std::uint32_t name) {
    std::erase_if(m_seats, [&](const std::unique_ptr<Seat>& seat) {
        const bool isGone = seat->name() == name;
        if (isGone && m_lastPress.seat == seat->seat())
            m_lastPress = {};
        return isGone;
    });
}

} // namespace lumora
