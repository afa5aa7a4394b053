#include "linux/session/WindowSystem.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

TEST(WindowSystemTest, X11PlacesWindowsAndTellsThePointer) {
    EXPECT_EQ(
        windowSystem(u"xcb"_s, false), (WindowSystem{.placesWindows = true, .tellsPointer = true}));
}

TEST(WindowSystemTest, X11InsideWaylandHasAStalePointer) {
    EXPECT_EQ(
        windowSystem(u"xcb"_s, true), (WindowSystem{.placesWindows = true, .tellsPointer = false}));
}

TEST(WindowSystemTest, WaylandDoesNeither) {
    for (const auto& platform : {u"wayland"_s, u"wayland-egl"_s}) {
        EXPECT_EQ(
            windowSystem(platform, true),
            (WindowSystem{.placesWindows = false, .tellsPointer = false}));
    }
}

TEST(WindowSystemTest, WithoutX11NobodyTellsThePointerAndAllIsComposited) {
    EXPECT_FALSE(pointerPosition().has_value());
    EXPECT_EQ(trayKeeper(), QString());
    EXPECT_TRUE(makeCompositing()->isActive());
}

} // namespace
} // namespace lumora::tests
