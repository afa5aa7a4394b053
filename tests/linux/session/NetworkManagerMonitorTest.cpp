#include "linux/session/NetworkManagerMonitor.h"

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

const QString networkManager = u"org.freedesktop.NetworkManager"_s;

void announceConnectivity(QDBusConnection sender, uint state) {
    auto signal = QDBusMessage::createSignal(
        u"/org/freedesktop/NetworkManager"_s, networkManager, u"StateChanged"_s);
    signal.setArguments({state});
    ASSERT_TRUE(sender.send(signal));
}

class NetworkManagerMonitorTest : public testing::Test {
protected:
    PrivateBus bus;
    QDBusConnection manager = bus.connect();
    NetworkManagerMonitor monitor{[this] { return bus.connect(); }};
    QSignalSpy cameUp{&monitor, &NetworkMonitor::cameUp};
};

} // namespace

TEST_F(NetworkManagerMonitorTest, TellsOfConnectionsOnly) {
    ASSERT_TRUE(manager.registerService(networkManager));
    for (const uint state : {20U, 40U, 50U, 60U, 70U})
        announceConnectivity(manager, state);
    ASSERT_TRUE(QTest::qWaitFor([this] { return cameUp.count() >= 2; }, patience));
    EXPECT_EQ(cameUp.count(), 2);
}

TEST_F(NetworkManagerMonitorTest, IgnoresOtherSenders) {
    ASSERT_TRUE(manager.registerService(networkManager));
    announceConnectivity(bus.connect(), 70);
    announceConnectivity(manager, 70); // comes second, so the other one has had its chance
    ASSERT_TRUE(cameUp.wait(patience));
    EXPECT_EQ(cameUp.count(), 1);
}

TEST(NetworkManagerMonitorWithoutBus, StaysSilent) {
    NetworkManagerMonitor monitor([] { return QDBusConnection(u"no such connection"_s); });
    QSignalSpy cameUp(&monitor, &NetworkMonitor::cameUp);
    drainEvents();
    EXPECT_EQ(cameUp.count(), 0);
}
