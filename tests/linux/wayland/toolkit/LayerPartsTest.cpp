#include "linux/wayland/LayerParts.h"

#include "linux/wayland/ToolkitHandles.h"
#include "linux/wayland/WaylandGlobals.h"
#include "linux/wayland/toolkit/ToolkitCompositor.h"

#include <QCoreApplication>
#include <QRasterWindow>
#include <QShowEvent>

#include <gmock/gmock.h>
#include <wayland-client.h>

#include <tuple>

namespace lumora::tests {
namespace {

using testing::HasSubstr;

/// Has everything sent and everything received, but hands out nothing: what the toolkit's own
/// reader does at any moment.
void exchangeEverything() {
    wl_display* const display = displayOfApplication();
    wl_event_queue* const none = wl_display_create_queue(display);
    EXPECT_GE(wl_display_roundtrip_queue(display, none), 0);
    wl_event_queue_destroy(none);
}

/// A window in the layer that has a menu, or another part.
class LayerPartsTest : public testing::Test {
protected:
    LayerPartsTest() {
        wl_display_roundtrip(displayOfApplication());
        std::ignore = toolkitCompositor().takeRequests();
        parts = std::make_unique<LayerParts>(
            window,
            LayerParts::Place{
                .shell = globals.layerShell(),
                .output = nullptr,
                .available = QRect(0, 30, 1280, 770),
                .window = QPoint(900, 30),
            },
            [this](const QRegion& now) {
                covered = now;
                exchangeEverything();
            });
        part.setTransientParent(&window);
        part.setFlags(Qt::ToolTip);
        part.setGeometry(10, 20, 80, 40);
    }

    void showAgain() {
        std::ignore = requests();
        QShowEvent shown;
        QCoreApplication::sendEvent(&part, &shown);
    }

    /// What was asked for since the last time.
    static std::string requests() {
        exchangeEverything();
        return toolkitCompositor().takeRequests();
    }

    WaylandGlobals globals{displayOfApplication(), {}};
    QWindow window;
    QRegion covered; ///< by the parts
    std::unique_ptr<LayerParts> parts;
    QRasterWindow part;
};

TEST_F(LayerPartsTest, HasTheCompositorsWordBeforeItShowsSomething) {
    part.show();
    EXPECT_EQ(requests(), "get_layer_surface, set_size 80x40, ack_configure");
    EXPECT_EQ(covered, QRegion(910, 50, 80, 40));
}

TEST_F(LayerPartsTest, FollowsAPartWhileItIsShown) {
    part.show();
    std::ignore = requests();
    part.setGeometry(10, 60, 100, 40);
    QCoreApplication::processEvents();
    EXPECT_THAT(requests(), HasSubstr("set_size 100x40"));
    EXPECT_EQ(covered, QRegion(910, 90, 100, 40));
    part.hide();
    EXPECT_TRUE(covered.isEmpty());
}

// Newer toolkits let windows keep their surfaces while they are hidden.
TEST_F(LayerPartsTest, PlacesAPartOnceHoweverOftenItWasShown) {
    part.create();
    for (int time = 0; time < 3; ++time) {
        showAgain();
        Q_EMIT part.visibleChanged(false);
    }
    showAgain();
    EXPECT_EQ(requests(), "get_layer_surface, set_size 80x40, ack_configure");
    showAgain();
    EXPECT_EQ(requests(), ""); // it is there already
    Q_EMIT part.widthChanged(80);
    EXPECT_EQ(requests(), "set_size 80x40");
}

TEST_F(LayerPartsTest, LeavesOtherWindowsAlone) {
    part.setTransientParent(nullptr);
    part.create();
    showAgain();
    EXPECT_TRUE(requests().empty());
    EXPECT_FALSE(part.flags() & Qt::BypassWindowManagerHint);
}

} // namespace
} // namespace lumora::tests
