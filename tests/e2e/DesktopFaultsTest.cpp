#include "e2e/ConfiguredProgram.h"
#include "fakes/FaultyBusService.h"

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Fault = FaultyBusService::Fault;

/// A program on the buses that Lumora listens to, with a signal of its.
struct Neighbour {
    const char* label;
    bool isOnSystemBus;
    QString name;
    QString path;
    QString interface;
    QString signal;
};

const std::vector<Neighbour> neighbours{
    {"watcher", false, u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
     u"org.kde.StatusNotifierWatcher"_s, u"StatusNotifierHostRegistered"_s},
    {"notifications", false, u"org.freedesktop.Notifications"_s,
     u"/org/freedesktop/Notifications"_s, u"org.freedesktop.Notifications"_s, u"ActionInvoked"_s},
    {"portal", false, u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
     u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s},
    {"xfconf", false, u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s, u"org.xfce.Xfconf"_s,
     u"PropertyChanged"_s},
    {"accessibility", false, u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
     u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s},
    {"logind", true, u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
     u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s},
    {"network", true, u"org.freedesktop.NetworkManager"_s, u"/org/freedesktop/NetworkManager"_s,
     u"org.freedesktop.NetworkManager"_s, u"StateChanged"_s},
};

void PrintTo(const Neighbour& neighbour, std::ostream* out) {
    *out << neighbour.label;
}

using Row = std::tuple<Neighbour, Fault>;

std::string nameOfRow(const testing::TestParamInfo<Row>& row) {
    const auto& [neighbour, fault] = row.param;
    return neighbour.label + testing::PrintToString(fault);
}

/// A desktop that is well but for one of its programs.
class DesktopFaults : public ConfiguredProgram, public testing::WithParamInterface<Row> {
protected:
    PrivateBus& busOf(const Neighbour& neighbour) {
        return neighbour.isOnSystemBus ? lumora.systemBus() : lumora.sessionBus();
    }

    void expectToWork() {
        EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
        EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    }

    void expectToEndWell() {
        lumora.program().terminate();
        const auto ended = lumora.waitForEnd();
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_EQ(ended.err, "");
    }
};

} // namespace

TEST_P(DesktopFaults, AtStartLaterAndAgain) {
    const auto& [neighbour, fault] = GetParam();
    auto faulty = std::make_unique<FaultyBusService>(busOf(neighbour), neighbour.name, fault);
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    expectToWork();
    faulty->flood(neighbour.path, neighbour.interface, neighbour.signal, 2000);
    expectToWork();
    faulty.reset();
    expectToWork();
    faulty = std::make_unique<FaultyBusService>(busOf(neighbour), neighbour.name, fault);
    expectToWork();
    expectToEndWell();
}

INSTANTIATE_TEST_SUITE_P(
    Of, DesktopFaults,
    testing::Combine(
        testing::ValuesIn(neighbours),
        testing::Values(Fault::Hangs, Fault::Refuses, Fault::Babbles)),
    nameOfRow);

namespace {

/// The same with the keyring, without which there is nothing to fetch.
class KeyringFaults : public ConfiguredProgram, public testing::WithParamInterface<Fault> {};

} // namespace

TEST_P(KeyringFaults, AreSurvivedAndHealed) {
    keyring.kill();
    const QString name = u"org.freedesktop.secrets"_s;
    auto faulty = std::make_unique<FaultyBusService>(lumora.sessionBus(), name, GetParam());
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow(
        {{u"state"_s, u"failed"_s}, {u"message"_s, u"Not configured — open Settings"_s}}));
    faulty->flood(
        u"/org/freedesktop/secrets"_s, u"org.freedesktop.Secret.Service"_s, u"CollectionChanged"_s,
        2000);
    EXPECT_EQ(lumora.run({u"status"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 1);
    faulty.reset();
    keyring.startUnlocked();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Of, KeyringFaults, testing::Values(Fault::Hangs, Fault::Refuses, Fault::Babbles),
    testing::PrintToStringParamName());

namespace {

/// The buses themselves.
class BusFaults : public ConfiguredProgram {};

} // namespace

TEST_F(BusFaults, TheSystemBusMayGo) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    lumora.systemBus().kill();
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    lumora.program().terminate();
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(BusFaults, TheSystemBusMayBeAbsent) {
    lumora.setVariable(u"DBUS_SYSTEM_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(BusFaults, WithoutASessionItEndsWhenAskedTo) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    lumora.sessionBus().kill();
    lumora.program().terminate();
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}
