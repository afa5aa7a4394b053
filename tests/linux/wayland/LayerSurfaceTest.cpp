#include "linux/wayland/LayerSurface.h"

#include "linux/wayland/WaylandGuest.h"

#include <gmock/gmock.h>

namespace lumora::tests {
namespace {

using testing::HasSubstr;

/// A surface in the layer of such a compositor.
struct LayerGuest {
    explicit LayerGuest(const FakeCompositor::Options& options)
        : compositor(options) {
        if (!guest.goesOn())
            ADD_FAILURE() << "the compositor does not want its guest";
        surface.reset(wl_compositor_create_surface(globals.compositor()));
        layer = std::make_unique<LayerSurface>(
            globals.layerShell(), surface.get(), nullptr, LayerSurface::Extent::WhatBarsLeave,
            LayerSurface::Events{
                .configured = [this](const QSize& size) { given = size; }, .closed = [] {}});
    }

    FakeCompositor compositor;
    WaylandGuest guest{compositor};
    WaylandGlobals globals{guest.display(), {}};
    WaylandPtr<wl_surface> surface;
    QSize given;
    std::unique_ptr<LayerSurface> layer; // ends before its surface
};

TEST(LayerSurface, ChangesItsLayerWhereTheCompositorKnowsHow) {
    LayerGuest newer({.layerShell = 2});
    newer.layer->setBehind(true);
    newer.layer->setBehind(false);
    EXPECT_TRUE(newer.guest.goesOn());
    EXPECT_EQ(newer.compositor.takeRequests(), "get_layer_surface, set_layer 2, set_layer 3");

    LayerGuest older({.layerShell = 1});
    older.layer->setBehind(true);
    EXPECT_TRUE(older.guest.goesOn());
}

TEST(LayerSurface, WelcomesTheKeyboardWhereTheCompositorKnowsHow) {
    LayerGuest newer({.layerShell = 4});
    newer.layer->setWelcomesKeyboard(true);
    EXPECT_TRUE(newer.guest.goesOn());
    EXPECT_THAT(newer.compositor.takeRequests(), HasSubstr("set_keyboard_interactivity 2"));

    LayerGuest older({.layerShell = 3});
    older.layer->setWelcomesKeyboard(true);
    EXPECT_TRUE(older.guest.goesOn());
    EXPECT_EQ(older.compositor.takeRequests(), "get_layer_surface");
}

TEST(LayerSurface, WaitsForACompositorThatThinks) {
    LayerGuest slow({.room = QSize(640, 480), .thinks = std::chrono::milliseconds(30)});
    slow.layer->commitAndAwait(slow.guest.display(), slow.surface.get());
    EXPECT_EQ(slow.given, QSize(640, 480));
    EXPECT_TRUE(slow.guest.goesOn());
    EXPECT_THAT(slow.compositor.takeRequests(), HasSubstr("ack_configure"));
}

TEST(LayerSurface, HearsEverythingFromTheEventLoopOnceItMayShowSomething) {
    LayerGuest placed({});
    placed.layer->commitAndAwait(placed.guest.display(), placed.surface.get());
    placed.layer->place({.size = QSize(80, 40), .margin = {}});
    wl_surface_commit(placed.surface.get());
    EXPECT_TRUE(placed.guest.goesOn());
    EXPECT_EQ(placed.given, QSize(80, 40));
}

} // namespace
} // namespace lumora::tests
