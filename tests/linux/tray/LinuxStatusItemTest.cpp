#include "linux/tray/LinuxStatusItemFixture.h"

#include <QDBusServiceWatcher>

#include <gmock/gmock.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class InsistentStatusItemTest : public LinuxStatusItemTest {
protected:
    InsistentStatusItemTest()
        : LinuxStatusItemTest(1ms) {}
};

} // namespace

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

TEST_F(InsistentStatusItemTest, ShowsAHostThatWasStillStartingItsSymbolAgain) {
    m_item.show(content());
    m_probe.listen(itemPath, itemInterface);
    const auto panel = watcher();
    ASSERT_TRUE(m_shown.wait(patience));
    const QStringList thrice{u"NewIcon"_s, u"NewIcon"_s, u"NewIcon"_s};
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_probe.signalNames() == thrice; }, patience));
    EXPECT_EQ(panel->registered().size(), 1);
}

TEST_F(InsistentStatusItemTest, ComesToGnomeASecondTime) {
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
