#include "linux/wayland/WaylandPanelLayer.h"

#include "linux/wayland/WaylandGuest.h"
#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace lumora::tests {
namespace {

constexpr char bypassVariable[] = "QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT";

TEST(WaylandPanelLayer, IsMissingWhereTheCompositorHasNone) {
    const ScopedEnvironment environment(bypassVariable, std::nullopt);
    FakeCompositor compositor({.layerShell = 0});
    const WaylandGuest guest(compositor);
    EXPECT_FALSE(WaylandPanelLayer::make(guest.display()));
    EXPECT_FALSE(qEnvironmentVariableIsSet(bypassVariable));
}

TEST(WaylandPanelLayer, ChangesTheEnvironmentOnce) {
    const ScopedEnvironment environment(bypassVariable, std::nullopt);
    FakeCompositor compositor;
    const WaylandGuest guest(compositor);
    const auto layer = WaylandPanelLayer::make(guest.display());
    ASSERT_TRUE(layer);
    EXPECT_EQ(qgetenv(bypassVariable), "1");
    layer->close();
    EXPECT_EQ(qgetenv(bypassVariable), "1");
    QWindow window;
    qunsetenv(bypassVariable);
    layer->open(window, {}, {});
    EXPECT_FALSE(qEnvironmentVariableIsSet(bypassVariable));
}

TEST(WaylandPanelLayer, LetsGoOfAWindowThatGetsNoSurface) {
    FakeCompositor compositor;
    const WaylandGuest guest(compositor);
    const auto layer = WaylandPanelLayer::make(guest.display());
    ASSERT_TRUE(layer);
    QWindow window; // not one of the compositor's: the toolkit has another platform here
    layer->open(window, {.pointer = true}, {});
    layer->place(QRect(0, 0, 100, 100));
    EXPECT_TRUE(guest.goesOn());
    EXPECT_EQ(compositor.takeRequests(), "");
}

} // namespace
} // namespace lumora::tests
