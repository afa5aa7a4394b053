#include "linux/session/LogindWakeMonitor.h"

#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString logind = u"org.freedesktop.login1"_s;

void announce(QDBusConnection sender, bool goingToSleep) {
    auto signal = QDBusMessage::createSignal(
        u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s);
    signal.setArguments({goingToSleep});
    ASSERT_TRUE(sender.send(signal));
}

class LogindWakeMonitorTest : public testing::Test {
protected:
    PrivateBus bus;
    QDBusConnection manager = bus.connect();
    QDBusConnection listening = bus.connect();
    LogindWakeMonitor monitor{[this] { return listening; }};
    QSignalSpy woke{&monitor, &WakeMonitor::woke};
};

} // namespace

TEST_F(LogindWakeMonitorTest, TellsOfWakingOnly) {
    ASSERT_TRUE(manager.registerService(logind));
    announce(manager, true);
    announce(manager, false);
    ASSERT_TRUE(woke.wait(patience));
    EXPECT_EQ(woke.count(), 1);
}

TEST_F(LogindWakeMonitorTest, HearsALogindThatWasRestarted) {
    ASSERT_TRUE(manager.registerService(logind));
    announce(manager, false);
    ASSERT_TRUE(woke.wait(patience));
    ASSERT_TRUE(manager.unregisterService(logind));

    QDBusConnection successor = bus.connect();
    ASSERT_TRUE(successor.registerService(logind));
    announce(successor, false);
    ASSERT_TRUE(woke.wait(patience));
    EXPECT_EQ(woke.count(), 2);
}

TEST_F(LogindWakeMonitorTest, IgnoresOtherSenders) {
    ASSERT_TRUE(manager.registerService(logind));
    announce(bus.connect(), false);
    announce(manager, false); // comes second, so the other one has had its chance
    ASSERT_TRUE(woke.wait(patience));
    EXPECT_EQ(woke.count(), 1);
}

TEST(LogindWakeMonitorWithoutBus, StaysSilent) {
    LogindWakeMonitor monitor([] { return QDBusConnection(u"no such connection"_s); });
    QSignalSpy woke(&monitor, &WakeMonitor::woke);
    drainEvents();
    EXPECT_EQ(woke.count(), 0);
}

TEST_F(LogindWakeMonitorTest, OutlivesTheBus) {
    bus.kill();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !listening.isConnected(); }, patience));
    drainEvents();
    EXPECT_EQ(woke.count(), 0);
}

TEST(LogindWakeMonitorWithoutListener, LeavesTheBusAlone) {
    int asked = 0;
    LogindWakeMonitor monitor([&asked] {
        ++asked;
        return QDBusConnection(u"no such connection"_s);
    });
    EXPECT_EQ(asked, 0);
    const QSignalSpy first(&monitor, &WakeMonitor::woke);
    const QSignalSpy second(&monitor, &WakeMonitor::woke);
    EXPECT_EQ(asked, 1);
}
