#include "linux/wayland/PointerCatcher.h"

#include "linux/wayland/WaylandGuest.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

namespace lumora::tests {
namespace {

using testing::HasSubstr;

/// What a catcher asks for in such a room. It goes on as a guest meanwhile.
std::string requestsOfCatcher(QSize room) {
    FakeCompositor compositor({.room = room});
    const WaylandGuest guest(compositor);
    const WaylandGlobals globals(guest.display(), {});
    EXPECT_TRUE(guest.goesOn());
    const PointerCatcher catcher(globals, QGuiApplication::primaryScreen(), nullptr);
    EXPECT_TRUE(guest.goesOn()); // it was told its size
    EXPECT_TRUE(guest.goesOn()); // it has answered
    return compositor.takeRequests();
}

TEST(PointerCatcher, CoversTheRoomThatItIsGiven) {
    EXPECT_THAT(requestsOfCatcher(QSize(1280, 800)), HasSubstr("set_destination 1280x800"));
}

TEST(PointerCatcher, CoversNothingWhereItIsGivenNoRoom) {
    for (const QSize room : {QSize(0, 0), QSize(1280, 0), QSize(0, 800)}) {
        const std::string asked = requestsOfCatcher(room);
        EXPECT_THAT(asked, HasSubstr("ack_configure"));
        EXPECT_THAT(asked, Not(HasSubstr("set_destination")));
    }
}

} // namespace
} // namespace lumora::tests
