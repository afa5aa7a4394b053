#include "app/PanelController.h"
#include "fakes/FakePanelLayer.h"
#include "fakes/RecordingUrlOpener.h"
#include "fakes/SwitchedCompositing.h"
#include "state/Ticker.h"
#include "support/StateHarness.h"
#include "ui/panel/PanelFooter.h"
#include "ui/theme/ThemeSource.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace lumora::tests {
namespace {

const PanelLayer::Room handOverRoom{
    .screen = QRect(0, 0, 1000, 800),
    .available = QRect(0, 30, 1000, 770),
    .pointer = std::nullopt,
};

/// What opens other windows from a panel that is in front of all of them.
class PanelHandOverTest : public testing::Test {
protected:
    PanelHandOverTest() {
        harness.start();
        ticker = std::make_unique<Ticker>(harness.clock);
        controller = std::make_unique<PanelController>(PanelController::Dependencies{
            .state = *harness.state,
            .ticker = *ticker,
            .preferences = harness.preferences,
            .clock = harness.clock,
            .urls = urls,
            .themes = themes,
            .compositing = compositing,
            .layer = &layer,
            .openSettings = [this](const QByteArray& token) { settingsOpened += token; },
            .quit = [] {},
        });
        controller->open({});
        layer.answers.opened(handOverRoom);
        for (QWidget* shown : QApplication::topLevelWidgets())
            panel = panel ? panel : qobject_cast<PanelWindow*>(shown);
    }

    PanelFooter* footer() const { return panel->findChild<PanelFooter*>(); }

    StateHarness harness;
    std::unique_ptr<Ticker> ticker;
    const ThemeSource themes{Theme(ColorScheme::Light, QFont())};
    SwitchedCompositing compositing{true};
    RecordingUrlOpener urls;
    FakePanelLayer layer;
    QList<QByteArray> settingsOpened;
    std::unique_ptr<PanelController> controller;
    PanelWindow* panel = nullptr;
};

TEST_F(PanelHandOverTest, LetsTheSettingsComeToTheFront) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(panel));
    Q_EMIT footer()->settingsRequested();
    ASSERT_TRUE(layer.tokenWanted);
    EXPECT_TRUE(settingsOpened.isEmpty());
    EXPECT_TRUE(panel->isVisible()); // the token is for what has the focus
    layer.tokenWanted("token");
    EXPECT_EQ(settingsOpened, QList<QByteArray>{"token"});
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(PanelHandOverTest, LetsTheBrowserComeToTheFront) {
    Q_EMIT footer()->dashboardRequested();
    ASSERT_TRUE(layer.tokenWanted);
    layer.tokenWanted("token");
    EXPECT_EQ(urls.opened.size(), 1);
    EXPECT_EQ(urls.tokens, QList<QByteArray>{"token"});
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(PanelHandOverTest, OpensNothingOnceItIsOver) {
    Q_EMIT footer()->dashboardRequested();
    controller.reset();
    layer.tokenWanted("token");
    EXPECT_TRUE(urls.opened.isEmpty());
}

} // namespace
} // namespace lumora::tests
