#include "linux/wayland/WaylandGuest.h"

#include <gmock/gmock.h>

namespace lumora::tests {
namespace {

constexpr std::uint32_t pointerOnly = WL_SEAT_CAPABILITY_POINTER;
constexpr std::uint32_t keyboardOnly = WL_SEAT_CAPABILITY_KEYBOARD;
constexpr std::uint32_t touchOnly = WL_SEAT_CAPABILITY_TOUCH;

/// Somebody with a seat of that version.
class SeatGuest {
public:
    explicit SeatGuest(std::uint32_t version)
        : m_compositor({.seat = version}) {
        EXPECT_TRUE(m_guest.goesOn());
    }

    /// What is asked for when the seat comes to have `capabilities`.
    std::string requestsAt(std::uint32_t capabilities) {
        m_compositor.setCapabilities(capabilities);
        EXPECT_TRUE(m_guest.goesOn()); // it was told
        EXPECT_TRUE(m_guest.goesOn()); // it has answered
        return m_compositor.takeRequests();
    }

private:
    FakeCompositor m_compositor;
    WaylandGuest m_guest{m_compositor};
    WaylandGlobals m_globals{m_guest.display(), {}};
};

TEST(WaylandInput, KeepsTheDevicesThatDoNotChange) {
    SeatGuest guest(3);
    EXPECT_EQ(guest.requestsAt(pointerOnly), "get wl_pointer");
    EXPECT_EQ(guest.requestsAt(pointerOnly | keyboardOnly), "get wl_keyboard");
    EXPECT_EQ(guest.requestsAt(pointerOnly | keyboardOnly | touchOnly), "get wl_touch");
    EXPECT_EQ(guest.requestsAt(keyboardOnly | touchOnly), "end wl_pointer");
    EXPECT_EQ(guest.requestsAt(pointerOnly), "get wl_pointer, end wl_keyboard, end wl_touch");
}

TEST(WaylandInput, LeavesDevicesOfOldSeatsToTheEndOfTheConnection) {
    SeatGuest guest(1);
    EXPECT_EQ(
        guest.requestsAt(pointerOnly | keyboardOnly | touchOnly),
        "get wl_pointer, get wl_keyboard, get wl_touch");
    EXPECT_EQ(guest.requestsAt(0), "");
    EXPECT_EQ(guest.requestsAt(touchOnly), "get wl_touch");
}

} // namespace
} // namespace lumora::tests
