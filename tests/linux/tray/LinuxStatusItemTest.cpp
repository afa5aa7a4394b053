#include "linux/tray/LinuxStatusItem.h"

#include "fakes/FakeBar.h"
#include "fakes/FakePreferences.h"
#include "linux/tray/BusNames.h"
#include "linux/tray/TrayWindow.h"
#include "support/BusProbe.h"
#include "support/FakeWatcher.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QDBusServiceWatcher>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

#include <memory>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace lumora {

using tests::patience;

namespace {

StatusItemContent content() {
    return {
        .symbol = u"calendar.badge.clock"_s,
        .text = u"Standup · 12m"_s,
        .title = u"Lumora"_s,
        .toolTipTitle = u"Lumora"_s,
        .toolTipBody = u"Standup in 12 minutes"_s,
        .menu = {{StatusMenuRow::Kind::Action, MenuCommand::Open, u"Open Lumora"_s}}};
}

class LinuxStatusItemTest : public testing::Test {
protected:
    std::unique_ptr<FakeWatcher> watcher(bool hasHost = true) {
        return std::make_unique<FakeWatcher>(m_bus.connect(), hasHost);
    }

    QList<IconPixmap> pixmaps() {
        return qdbus_cast<QList<IconPixmap>>(
            m_probe.property(itemPath, itemInterface, u"IconPixmap"_s));
    }

    bool becomesAvailable(bool available) {
        return QTest::qWaitFor(
            [&] { return m_item.unavailableReason().isEmpty() == available; }, patience);
    }

    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    bool m_trayExists = false;
    TrayWindow m_window;
    QString m_host;   ///< the name of the watcher's process
    QString m_keeper; ///< of the tray of the old kind
    int m_scale = 1;
    FakePreferences m_preferences;
    FakeBar* const m_bar = new FakeBar; ///< the item's
    LinuxStatusItem m_item{
        m_connection,
        m_preferences,
        std::unique_ptr<BarAppearance>(m_bar),
        {.desktop = u"sway"_s,
         .tray =
             {.grace = 1ms,
              .pause = 1ms,
              .trayExists = [this] { return m_trayExists; },
              .windows = [this] { return m_window.windows(); }},
         .nameOf = [this](uint) { return m_host; },
         .trayKeeper = [this] { return m_keeper; },
         .scale = [this] { return m_scale; },
         .insistence = 1ms}};
    BusProbe m_probe{m_bus.connect(), m_connection.baseService()};
    QSignalSpy m_shown{&m_item, &StatusItem::shown};
};

TEST_F(LinuxStatusItemTest, RegistersWithTheFirstContent) {
    const auto panel = watcher();
    m_item.show(content());
    EXPECT_FALSE(m_item.unavailableReason().isEmpty());
    ASSERT_TRUE(m_shown.wait(patience));
    m_item.show(content());

    EXPECT_EQ(m_item.unavailableReason(), QString());
    EXPECT_EQ(panel->registered(), QStringList{m_connection.baseService()});
    EXPECT_EQ(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s), u"Standup · 12m"_s);
}

TEST_F(LinuxStatusItemTest, DrawsTheSymbolInTheSizesOfPanels) {
    m_item.show(content());
    QList<int> sizes;
    for (const IconPixmap& pixmap : pixmaps()) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.bytes.size(), 4 * pixmap.width * pixmap.height);
        sizes += pixmap.width;
    }
    EXPECT_THAT(sizes, ElementsAre(16, 22, 24, 32, 44, 48));
}

TEST_F(LinuxStatusItemTest, DrawsTheSymbolAnewForAnotherBar) {
    m_item.show(content());
    const QVariant onDark = m_probe.property(itemPath, itemInterface, u"IconPixmap"_s);
    m_probe.listen(itemPath, itemInterface);
    m_bar->setTone(SymbolTone::Dark);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"NewIcon"_s));
    const QVariant onLight = m_probe.property(itemPath, itemInterface, u"IconPixmap"_s);
    EXPECT_NE(
        qdbus_cast<QList<IconPixmap>>(onDark).last(),
        qdbus_cast<QList<IconPixmap>>(onLight).last());
}

TEST_F(LinuxStatusItemTest, DrawsSymbolAndTextWhereThereIsRoomForThem) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    const QList<IconPixmap> drawn = pixmaps();
    ASSERT_EQ(drawn.size(), 1);
    EXPECT_GT(drawn.first().width, 3 * drawn.first().height);
    EXPECT_FALSE(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s).isValid());

    StatusItemContent textless = content();
    textless.text.reset();
    m_item.show(textless);
    EXPECT_EQ(pixmaps().size(), 6);
}

TEST_F(LinuxStatusItemTest, DrawsSymbolAndTextSharplyOnSharpScreens) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    ASSERT_EQ(pixmaps().size(), 1);
    EXPECT_EQ(pixmaps().first().height, 22);
    m_scale = 2;
    m_item.show(content()); // within a minute
    ASSERT_EQ(pixmaps().size(), 1);
    EXPECT_EQ(pixmaps().first().height, 44);
}

TEST_F(LinuxStatusItemTest, NamesItsIconWhereNothingDrawnIsShown) {
    m_host = u"ayatana-indicat"_s;
    const auto name = [this] { return m_probe.property(itemPath, itemInterface, u"IconName"_s); };
    auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_TRUE(QTest::qWaitFor([&] { return name() == u"com.lumora.app-symbolic"_s; }, patience));
    EXPECT_EQ(pixmaps().size(), 6);
    m_host = u"waybar"_s;
    panel.reset();
    panel = watcher();
    EXPECT_TRUE(QTest::qWaitFor([&] { return name() == QString(); }, patience));
}

TEST_F(LinuxStatusItemTest, DrawsTheShortTextInsteadOfTheSymbolInSquares) {
    m_host = u"kded6"_s;
    const auto panel = watcher();
    m_item.show(content()); // which has no short text
    ASSERT_TRUE(m_shown.wait(patience));
    const QList<IconPixmap> symbol = pixmaps();
    StatusItemContent shortened = content();
    shortened.shortText = u"12m"_s;
    m_item.show(shortened);
    const QList<IconPixmap> text = pixmaps();
    ASSERT_EQ(text.size(), 6);
    EXPECT_EQ(text.last().width, text.last().height);
    EXPECT_NE(text.last(), symbol.last());
    EXPECT_FALSE(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s).isValid());

    // Another symbol behind it makes no difference.
    shortened.symbol = u"calendar"_s;
    m_probe.listen(itemPath, itemInterface);
    m_item.show(shortened);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre());
}

TEST_F(LinuxStatusItemTest, TakesTheUsersWordForIt) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(pixmaps().size(), 1);
    m_preferences.set(u"label"_s, u"symbol"_s);
    EXPECT_EQ(pixmaps().size(), 6);
    m_preferences.set(u"label"_s, u"text"_s);
    EXPECT_EQ(pixmaps().size(), 1);
}

TEST_F(LinuxStatusItemTest, KnowsAHostThatTookAnothersPlace) {
    m_host = u"waybar"_s;
    auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(pixmaps().size(), 1);
    panel.reset();
    ASSERT_TRUE(becomesAvailable(false));
    m_host = u"gnome-shell"_s;
    panel = watcher();
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(pixmaps().size(), 6);
    EXPECT_EQ(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s), u"Standup · 12m"_s);
}

TEST_F(LinuxStatusItemTest, ShowsAHostThatWasStillStartingItsSymbolAgain) {
    m_item.show(content());
    m_probe.listen(itemPath, itemInterface);
    const auto panel = watcher();
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return m_probe.signalNames() == QStringList{u"NewIcon"_s}; }, patience));
    EXPECT_EQ(panel->registered().size(), 1);
}

TEST_F(LinuxStatusItemTest, ComesToGnomeASecondTime) {
    m_host = u"gnome-shell"_s;
    const auto panel = watcher();
    m_item.show(content());
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel->registered().size() == 2; }, patience));
    EXPECT_EQ(panel->registered().first(), panel->registered().last());
}

TEST_F(LinuxStatusItemTest, SendsNothingWhenNothingChanged) {
    m_item.show(content());
    m_probe.listen(itemPath, itemInterface);
    m_probe.listen(menuPath, menuInterface);
    m_probe.listen(itemPath, u"org.freedesktop.DBus.Properties"_s);
    m_item.show(content());
    EXPECT_THAT(m_probe.signalNames(), ElementsAre());

    StatusItemContent later = content();
    later.text = u"Standup · 11m"_s;
    m_item.show(later);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"XAyatanaNewLabel"_s, u"PropertiesChanged"_s));
}

TEST_F(LinuxStatusItemTest, ComesBackWithARestartedWatcher) {
    auto first = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    first.reset();
    EXPECT_TRUE(becomesAvailable(false));

    const auto second = watcher();
    EXPECT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(second->registered(), QStringList{m_connection.baseService()});
    EXPECT_EQ(m_item.unavailableReason(), QString());
}

TEST_F(LinuxStatusItemTest, SaysWhyItIsNowhere) {
    EXPECT_EQ(m_item.unavailableReason(), u"No status area: none has been found yet"_s);
    m_item.show(content());
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return m_item.unavailableReason() ==
                   u"No status area: the desktop has neither status items nor a system tray"_s;
        },
        patience));
    const auto hostless = watcher(false);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return m_item.unavailableReason() ==
                   u"No status area: the desktop keeps status items, but nothing shows them"_s;
        },
        patience));

    LinuxStatusItem alone{
        QDBusConnection(u"none"_s), m_preferences, std::make_unique<FakeBar>(), {}};
    alone.show(content());
    EXPECT_EQ(
        alone.unavailableReason(), u"No status area: there is no session bus and no system tray"_s);
}

TEST_F(LinuxStatusItemTest, GoesToAnOldTrayWhileThereIsNoWatcher) {
    m_trayExists = true;
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(m_item.unavailableReason(), QString());

    auto panel = watcher();
    ASSERT_TRUE(m_shown.wait(patience));
    m_trayExists = false;
    EXPECT_EQ(m_item.unavailableReason(), QString());

    panel.reset();
    EXPECT_TRUE(becomesAvailable(false));
    m_trayExists = true;
    EXPECT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(m_item.unavailableReason(), QString());
}

TEST_F(LinuxStatusItemTest, TakesMoreThanASquareInAnOldTrayThatHasRoom) {
    m_trayExists = true;
    m_keeper = u"trayer"_s;
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_GT(m_window.room().width(), 60);

    m_keeper.clear();
    StatusItemContent later = content();
    later.text = u"Standup · 11m"_s;
    m_item.show(later);
    EXPECT_EQ(m_window.room().width(), 22);
}

TEST_F(LinuxStatusItemTest, LooksAtTheKeeperOfAnOldTrayOnceItIsThere) {
    m_item.show(content());
    m_keeper = u"trayer"_s;
    m_trayExists = true;
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_GT(m_window.room().width(), 60);
}

TEST_F(LinuxStatusItemTest, HandsTheTokenToAPressOrACommand) {
    m_item.show(content());
    const QSignalSpy activated(&m_item, &StatusItem::activated);
    const QSignalSpy commands(&m_item, &StatusItem::commandChosen);
    const QString provide = u"ProvideXdgActivationToken"_s;
    const QVariant data = QVariant::fromValue(QDBusVariant(QString()));

    m_probe.call(itemPath, itemInterface, provide, {u"first"_s});
    m_probe.call(itemPath, itemInterface, u"Activate"_s, {3, 4});
    m_probe.call(itemPath, itemInterface, provide, {u"second"_s});
    m_probe.call(menuPath, menuInterface, u"Event"_s, {1, u"clicked"_s, data, uint(0)});

    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.at(0).at(0).toPoint(), QPoint(3, 4));
    EXPECT_EQ(activated.at(0).at(1).toByteArray(), "first");
    ASSERT_EQ(commands.size(), 1);
    EXPECT_EQ(commands.at(0).at(0).value<MenuCommand>(), MenuCommand::Open);
    EXPECT_EQ(commands.at(0).at(1).toByteArray(), "second");
}

TEST_F(LinuxStatusItemTest, AppearsAnewOnMateWhenTheTextGoes) {
    const auto panel = watcher();
    LinuxStatusItem item{
        m_connection,
        m_preferences,
        std::make_unique<FakeBar>(),
        {.desktop = u"MATE"_s, .connect = [this](const QString& name) {
             return QDBusConnection::connectToBus(m_bus.address(), name);
         }}};
    QSignalSpy shown(&item, &StatusItem::shown);
    StatusItemContent next = content();
    item.show(next);
    ASSERT_TRUE(shown.wait(patience));
    next.text = u"Standup · 11m"_s;
    item.show(next);
    ASSERT_EQ(panel->registered().size(), 1);

    QDBusServiceWatcher old(
        panel->registered().first(), m_bus.connect(), QDBusServiceWatcher::WatchForUnregistration);
    QSignalSpy oldGone(&old, &QDBusServiceWatcher::serviceUnregistered);
    next.text.reset();
    item.show(next);
    EXPECT_TRUE(oldGone.wait(patience));
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel->registered().size() == 2; }, patience));
    BusProbe probe(m_bus.connect(), panel->registered().last());
    EXPECT_FALSE(probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s).isValid());
    EXPECT_EQ(probe.property(itemPath, itemInterface, u"Title"_s), u"Lumora"_s);
    EXPECT_EQ(
        qdbus_cast<QList<IconPixmap>>(probe.property(itemPath, itemInterface, u"IconPixmap"_s))
            .size(),
        6);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item.unavailableReason().isEmpty(); }, patience));
    EXPECT_NE(panel->registered().first(), panel->registered().last());
}

} // namespace
} // namespace lumora
