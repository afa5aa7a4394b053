#include "linux/notifications/DesktopNotificationCenter.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeNotificationServer.h"
#include "support/Await.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class DesktopNotificationCenterTest : public testing::Test {
protected:
    void startServer() { desktop = std::make_unique<FakeNotificationServer>(bus.connect()); }

    bool asksForPermission() { return awaitValue(center->requestAuthorization()); }

    QStringList pending() { return awaitValue(center->pendingIdentifiers()); }

    void addIn(const QString& identifier, std::chrono::seconds delay) {
        center->add(
            {.identifier = identifier,
             .title = identifier,
             .userInfo = {{u"meetingUrl"_s, u"https://meet.example/"_s + identifier}},
             .fireTime = clock.now() + delay});
    }

    bool showsCount(qsizetype count) {
        return QTest::qWaitFor([&] { return desktop->shown.size() == count; }, patience);
    }

    PrivateBus bus;
    FakeClock clock;
    std::optional<DesktopNotificationCenter> center{std::in_place, bus.connect(), clock};
    std::unique_ptr<FakeNotificationServer> desktop;
};

} // namespace

TEST_F(DesktopNotificationCenterTest, IsAllowedToNotifyWhereAServerAnswers) {
    startServer();
    EXPECT_TRUE(asksForPermission());
    EXPECT_EQ(desktop->shown.size(), 0);
}

TEST_F(DesktopNotificationCenterTest, IsNotAllowedToNotifyWithoutAServer) {
    EXPECT_FALSE(asksForPermission());
}

TEST_F(DesktopNotificationCenterTest, IsNotAllowedToNotifyWithoutABus) {
    center.emplace(QDBusConnection(u"no such connection"_s), clock);
    EXPECT_FALSE(asksForPermission());
}

TEST_F(DesktopNotificationCenterTest, TellsWhenARefusalWouldBeNoneAnyLonger) {
    const QSignalSpy authorizable(&*center, &NotificationCenter::authorizable);
    EXPECT_FALSE(asksForPermission());
    startServer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return authorizable.size() == 1; }, patience));
    EXPECT_TRUE(asksForPermission());

    desktop.reset();
    startServer(); // nobody was refused since
    EXPECT_TRUE(asksForPermission());
    EXPECT_EQ(authorizable.size(), 1);
}

TEST_F(DesktopNotificationCenterTest, AServerThatDiesWhileItIsAskedRefuses) {
    startServer();
    desktop->hold(u"GetCapabilities"_s);
    const auto question = center->requestAuthorization();
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop->capabilityCalls == 1; }, patience));
    EXPECT_FALSE(question.isReady());
    desktop.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return question.isReady(); }, patience));
}

TEST_F(DesktopNotificationCenterTest, ASlowServerHoldsNothingElseUp) {
    startServer();
    desktop->hold(u"GetCapabilities"_s);
    const auto question = center->requestAuthorization();
    addIn(u"a"_s, 1h);
    EXPECT_EQ(pending(), QStringList{u"a"_s});
    EXPECT_FALSE(question.isReady());
    desktop->release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return question.isReady(); }, patience));
}

TEST_F(DesktopNotificationCenterTest, MayEndWhileSomebodyWaitsForPermission) {
    startServer();
    desktop->hold(u"GetCapabilities"_s);
    const auto question = center->requestAuthorization();
    center.reset();
    EXPECT_TRUE(question.isReady());
}

TEST_F(DesktopNotificationCenterTest, ShowsARequestAtItsTimeAndPassesTheReactionOn) {
    QSignalSpy responded(&*center, &NotificationCenter::responded);
    startServer();
    addIn(u"a"_s, 1h);
    addIn(u"b"_s, 2h);
    EXPECT_EQ(pending(), (QStringList{u"a"_s, u"b"_s}));
    clock.advance(1h);
    EXPECT_EQ(pending(), QStringList{u"b"_s});
    ASSERT_TRUE(showsCount(1));
    EXPECT_EQ(desktop->shown[0].summary, u"a"_s);

    Q_EMIT desktop->ActivationToken(1, u"token"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return responded.size() == 1; }, patience));
    const QVariantMap expected{{u"meetingUrl"_s, u"https://meet.example/a"_s}};
    EXPECT_EQ(responded[0][0].toMap(), expected);
    EXPECT_EQ(responded[0][1].toByteArray(), QByteArray("token"));
}

TEST_F(DesktopNotificationCenterTest, WithdrawsWhatIsPending) {
    startServer();
    addIn(u"a"_s, 1h);
    addIn(u"b"_s, 1h);
    addIn(u"c"_s, 1h);
    center->removePending({u"a"_s, u"c"_s});
    EXPECT_EQ(pending(), QStringList{u"b"_s});
    center->removeAllPending();
    EXPECT_EQ(pending(), QStringList());
    addIn(u"d"_s, 2h);
    clock.advance(2h);
    ASSERT_TRUE(showsCount(1));
    EXPECT_EQ(desktop->shown[0].summary, u"d"_s);
}

TEST_F(DesktopNotificationCenterTest, WithdrawingEverythingIncludesWhatWaitsForAServer) {
    addIn(u"a"_s, 0s);
    clock.advance(0s);
    EXPECT_EQ(pending(), QStringList());
    EXPECT_FALSE(asksForPermission()); // by now it is known that nobody is there
    center->removeAllPending();
    addIn(u"b"_s, 0s);
    clock.advance(0s);
    startServer();
    ASSERT_TRUE(showsCount(1));
    EXPECT_EQ(desktop->shown[0].summary, u"b"_s);
}
