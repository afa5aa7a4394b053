#include "fakes/FakeClock.h"
#include "fakes/FakePanelLayer.h"
#include "fakes/SwitchedCompositing.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora::tests {
namespace {

const QRect wholeScreen(0, 0, 1000, 800);
const PanelLayer::Room underTopBar{
    .screen = wholeScreen,
    .available = wholeScreen.adjusted(0, 30, 0, 0),
    .pointer = QPoint(500, 15),
};
/// What hosts report that count from the item's own corner.
const AnchorEvidence layerPress{.activation = QPoint(10, 14), .pressed = true};

class PanelInLayerTest : public testing::Test {
protected:
    PanelInLayerTest() {
        auto* const layout = new QVBoxLayout(content);
        layout->setContentsMargins({});
        layout->addWidget(block);
        block->setFixedHeight(300);
        window = std::make_unique<PanelWindow>(
            content, PanelWindow::Dependencies{
                         .themes = themes,
                         .compositing = compositing,
                         .clock = clock,
                         .layer = &layer,
                     });
    }

    void open(const PanelLayer::Room& room = underTopBar) {
        window->toggle(layerPress);
        layer.answers.opened(room);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    /// After that, a press is no second one of a double click any more.
    void passDoubleClick() {
        clock.advance(std::chrono::milliseconds(QApplication::doubleClickInterval()));
    }

    ThemeSource themes{Theme(ColorScheme::Light, QFont())};
    SwitchedCompositing compositing{true};
    FakeClock clock;
    FakePanelLayer layer;
    QWidget* block = new QWidget;
    QWidget* content = new QWidget;
    std::unique_ptr<PanelWindow> window;
};

TEST_F(PanelInLayerTest, AsksForThePointerAndWaits) {
    window->toggle(layerPress);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(layer.shown, window->windowHandle());
    EXPECT_TRUE(layer.wishes.last().pointer);
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::BypassWindowManagerHint));
}

TEST_F(PanelInLayerTest, NeedsNoPointerAtACommand) {
    window->showAt({});
    EXPECT_FALSE(layer.wishes.last().pointer);
}

TEST_F(PanelInLayerTest, OpensAtThePointerAndTheBar) {
    open();
    ASSERT_EQ(layer.areas.size(), 1);
    const QRect panel = window->panelRect().translated(layer.areas.last().topLeft());
    EXPECT_EQ(panel.top(), 34);
    EXPECT_EQ(panel.left() + panel.width() / 2, 500);
    EXPECT_EQ(layer.areas.last().bottom(), wholeScreen.bottom()); // room to grow
    EXPECT_TRUE(window->mask().isEmpty());
}

TEST_F(PanelInLayerTest, RemembersThePlaceForCommands) {
    open();
    window->hide();
    window->showAt({});
    EXPECT_EQ(layer.wishes.last().near, QPoint(500, 15));
    PanelLayer::Room unknown = underTopBar;
    unknown.pointer.reset();
    layer.answers.opened(unknown);
    EXPECT_EQ(layer.areas.last(), layer.areas.first());
}

TEST_F(PanelInLayerTest, LeavesTheLayerBeforeItIsHidden) {
    open();
    window->hide();
    EXPECT_FALSE(layer.shown);
    EXPECT_TRUE(layer.wasVisibleAtClose);
}

TEST_F(PanelInLayerTest, LeavesTheLayerBeforeItEnds) {
    open();
    window.reset();
    EXPECT_FALSE(layer.shown);
    EXPECT_TRUE(layer.wasVisibleAtClose);
}

TEST_F(PanelInLayerTest, ClosesAtAPressOutside) {
    open();
    passDoubleClick();
    layer.answers.pressedOutside();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(layer.shown);
}

TEST_F(PanelInLayerTest, StaysOpenAtADoubleClick) {
    open();
    layer.answers.pressedOutside();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelInLayerTest, WaitsOnWhereThePressCameFirst) {
    window->toggle(layerPress);
    layer.answers.pressedOutside();
    EXPECT_TRUE(layer.shown);
}

TEST_F(PanelInLayerTest, ClosesWithTheLayer) {
    open();
    layer.answers.closed();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PanelInLayerTest, CanBeCalledOffWhileItOpens) {
    window->toggle(layerPress);
    window->hide();
    EXPECT_FALSE(layer.shown);
}

TEST_F(PanelInLayerTest, StaysWhereItIsWhileItGrows) {
    open();
    block->setFixedHeight(500);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    EXPECT_EQ(window->panelRect().height(), 500);
    EXPECT_EQ(layer.areas.size(), 1);
}

TEST_F(PanelInLayerTest, ClosesAtAPressBesideThePanel) {
    open();
    passDoubleClick();
    QTest::mouseClick(
        window.get(), Qt::LeftButton, {}, QPoint(10, window->panelRect().bottom() + 50));
    EXPECT_FALSE(window->isVisible());
}

} // namespace
} // namespace lumora::tests
