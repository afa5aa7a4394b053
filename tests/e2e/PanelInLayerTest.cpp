#include "e2e/ConfiguredProgram.h"
#include "e2e/SwayDesktop.h"
#include "support/FakeWatcher.h"
#include "support/Patience.h"

#include <QDBusMessage>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int reach = 8; ///< points between bar and panel

/// Of a panel that is 320 pixels wide: above its lower edge, and from its left one.
constexpr int captureField = 47;
constexpr int footer = 15;
constexpr int dashboard = 185;

/// As large as `length` is there, in a panel that is as wide as its font has it.
int sized(int length, const QRect& panel) {
    return length * panel.width() / 320;
}

/// A person at a Wayland compositor that has a layer for panels.
class PanelInLayer : public ConfiguredProgram {
protected:
    void SetUp() override {
        if (!SwayDesktop::isInstalled())
            GTEST_SKIP() << "there is no sway";
        ConfiguredProgram::SetUp();
    }

    void TearDown() override { lumora.end(); } // no program outlives its compositor

    void start(double scale = 1) {
        desktop.emplace(scale);
        lumora.setVariable(u"WAYLAND_DISPLAY"_s, desktop->socket());
        lumora.setVariable(u"QT_QPA_PLATFORM"_s, {});
        // The toolkit never frees what it has bound of the compositor, nor what drew for that.
        lumora.setVariable(u"LSAN_OPTIONS"_s, u"detect_leaks=0"_s);
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    }

    /// Presses the item, of whose place the status area has a wrong idea.
    void pressItem(QPoint pointer) {
        desktop->moveTo(pointer);
        QDBusMessage press = QDBusMessage::createMethodCall(
            lumora.uniqueName(), u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s,
            u"Activate"_s);
        press << 10 << 14;
        connection.call(press);
    }

    /// Presses there until the panel is gone: what comes too soon is the second press of a double
    /// click.
    bool closesAtPress(QPoint place) {
        return QTest::qWaitFor(
            [&] {
                desktop->click(place);
                return desktop->bright().isNull();
            },
            patience);
    }

    QDBusConnection connection = lumora.sessionBus().connect();
    FakeWatcher watcher{lumora.sessionBus().connect()};
    std::optional<SwayDesktop> desktop;
};

/// The same at several numbers of pixels a point.
class PanelInLayerScaled : public PanelInLayer, public testing::WithParamInterface<double> {};

} // namespace

TEST_P(PanelInLayerScaled, OpensAtTheBarAndThePointer) {
    const double scale = GetParam();
    start(scale);
    const QPoint pointer(600, 10);
    pressItem(pointer);
    const QRect panel = desktop->comesToBeBright();
    ASSERT_FALSE(panel.isNull());
    const double gap = panel.top() / scale - SwayDesktop::barThickness;
    EXPECT_GE(gap, 0);
    EXPECT_LE(gap, reach);
    EXPECT_LT(panel.left(), pointer.x());
    EXPECT_GT(panel.right(), pointer.x());
    // As the desktop's font goes.
    EXPECT_GT(panel.width() / scale, 260);
    EXPECT_LT(panel.width() / scale, 380);
}

INSTANTIATE_TEST_SUITE_P(Scales, PanelInLayerScaled, testing::Values(1, 1.5, 2));

TEST_F(PanelInLayer, EscapeCloses) {
    start();
    pressItem({600, 10});
    ASSERT_FALSE(desktop->comesToBeBright().isNull());
    desktop->press(u"Escape"_s);
    EXPECT_TRUE(desktop->comesToBeDark());
    pressItem({600, 10});
    EXPECT_FALSE(desktop->comesToBeBright().isNull());
}

TEST_F(PanelInLayer, APressOutsideCloses) {
    start();
    pressItem({600, 10});
    ASSERT_FALSE(desktop->comesToBeBright().isNull());
    EXPECT_TRUE(closesAtPress({100, 700}));
}

TEST_F(PanelInLayer, APressOnTheBarCloses) {
    start();
    pressItem({600, 10});
    ASSERT_FALSE(desktop->comesToBeBright().isNull());
    EXPECT_TRUE(closesAtPress({600, 10}));
}

TEST_F(PanelInLayer, AThoughtAndReturnReachTheInbox) {
    start();
    pressItem({600, 10});
    const QRect panel = desktop->comesToBeBright();
    ASSERT_FALSE(panel.isNull());
    desktop->click({panel.center().x(), panel.bottom() - sized(captureField, panel)});
    desktop->type(u"A bell for the bicycle"_s);
    desktop->press(u"Return"_s);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return service.inbox() == QStringList(u"A bell for the bicycle"_s); }, patience));
}

TEST_F(PanelInLayer, AMenuOfThePanelIsInFrontOfIt) {
    start();
    pressItem({600, 10});
    const QRect panel = desktop->comesToBeBright();
    ASSERT_FALSE(panel.isNull());
    // Beside the panel, so that it can be told from it.
    desktop->click({panel.right() - 40, panel.bottom() - sized(captureField, panel)}, 3);
    const auto reachesFarther = [&] { return desktop->bright().right() > panel.right() + 20; };
    ASSERT_TRUE(QTest::qWaitFor(reachesFarther, patience));
    desktop->press(u"Escape"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop->bright() == panel; }, patience));
}

TEST_F(PanelInLayer, ALinkCarriesAnActivationToken) {
    const QTemporaryDir browser;
    const QString opened = browser.filePath(u"opened"_s);
    QFile script(browser.filePath(u"xdg-open"_s));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(
        "#!/bin/sh\n"
        "printf '%s %s\\n' \"$XDG_ACTIVATION_TOKEN\" \\\n"
        "    \"${QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT-unchanged}\" > \"${0%/*}/opened\"\n");
    ASSERT_TRUE(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    script.close();
    lumora.setVariable(u"PATH"_s, browser.path() + u':' + qEnvironmentVariable("PATH"));
    start();
    pressItem({600, 10});
    const QRect panel = desktop->comesToBeBright();
    ASSERT_FALSE(panel.isNull());
    desktop->click({panel.left() + sized(dashboard, panel), panel.bottom() - sized(footer, panel)});
    const auto found = [&] {
        QFile file(opened);
        return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QByteArrayList();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return found().size() == 2; }, patience));
    EXPECT_FALSE(found().first().isEmpty());
    EXPECT_EQ(found().last(), "unchanged\n"); // what is for the toolkit here is not for others
    EXPECT_TRUE(desktop->comesToBeDark());
}

TEST_F(PanelInLayer, TheSettingsAreAWindowLikeOthers) {
    start();
    pressItem({600, 10});
    const QRect panel = desktop->comesToBeBright();
    ASSERT_FALSE(panel.isNull());
    desktop->press(u"ctrl+comma"_s);
    // In the middle of the screen, where the compositor has new windows of a fixed size.
    const auto isApart = [&] { return desktop->bright().top() > panel.top() + reach; };
    EXPECT_TRUE(QTest::qWaitFor(isApart, patience));
}

TEST_F(PanelInLayer, ControlQEndsTheProgram) {
    start();
    pressItem({600, 10});
    ASSERT_FALSE(desktop->comesToBeBright().isNull());
    desktop->press(u"ctrl+q"_s);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(PanelInLayer, TheCommandTogglesIt) {
    start();
    EXPECT_EQ(lumora.run({u"toggle"_s}).exitCode, 0);
    ASSERT_FALSE(desktop->comesToBeBright().isNull());
    EXPECT_EQ(lumora.run({u"toggle"_s}).exitCode, 0);
    EXPECT_TRUE(desktop->comesToBeDark());
}
