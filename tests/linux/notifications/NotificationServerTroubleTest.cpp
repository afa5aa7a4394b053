#include "linux/notifications/NotificationDelivererFixture.h"

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

TEST_F(NotificationDelivererTest, WaitsForAServer) {
    deliverer.deliver(request(u"a"_s));
    deliverer.deliver(request(u"b"_s));
    settle();
    clock.advance(10min);
    startServer();
    EXPECT_TRUE(showsCount(2));
    settle();
    EXPECT_EQ(titles(), (QStringList{u"a"_s, u"b"_s}));
    Q_EMIT desktop->ActionInvoked(2, u"default"_s);
    settle();
    EXPECT_EQ(opened(), QStringList{u"https://meet.example/b"_s});
}

TEST_F(NotificationDelivererTest, GivesUpOnAServerThatComesTooLate) {
    deliverer.deliver(request(u"a"_s));
    settle();
    clock.advance(10min + 1us);
    deliverer.deliver(request(u"b"_s));
    startServer();
    EXPECT_TRUE(showsCount(1));
    settle();
    EXPECT_EQ(titles(), QStringList{u"b"_s});
}

TEST_F(NotificationDelivererTest, ShowsNothingASecondTimeAfterARestart) {
    startServer();
    deliverAndConfirm(u"a"_s);
    desktop.reset();
    startServer();
    deliverAndConfirm(u"b"_s);
    EXPECT_EQ(titles(), QStringList{u"b"_s});
}

TEST_F(NotificationDelivererTest, AnIdReusedAfterARestartOpensNothingWrong) {
    startServer();
    deliverAndConfirm(u"a"_s);
    desktop.reset();
    startServer();
    settle();
    Q_EMIT desktop->ActionInvoked(1, u"default"_s); // another program's notification by now
    settle();
    EXPECT_TRUE(responses.isEmpty());
    deliverAndConfirm(u"a"_s);
    EXPECT_EQ(desktop->shown[0].replacesId, 0U);
}

TEST_F(NotificationDelivererTest, WhatADyingServerWasAskedToShowIsShownByTheNext) {
    startServer(u"Notify"_s);
    deliverer.deliver(request(u"a"_s));
    ASSERT_TRUE(showsCount(1));
    desktop.reset();
    startServer();
    EXPECT_TRUE(showsCount(1));
    settle();
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(opened(), QStringList{u"https://meet.example/a"_s});
}

TEST_F(NotificationDelivererTest, AServerThatDiesBeforeItIsAskedLosesNothing) {
    startServer(u"GetCapabilities"_s);
    deliverer.deliver(request(u"a"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop->capabilityCalls == 1; }, patience));
    desktop.reset();
    startServer();
    EXPECT_TRUE(showsCount(1));
}

TEST_F(NotificationDelivererTest, ASlowServerShowsEverythingOnce) {
    startServer(u"GetCapabilities"_s);
    deliverer.deliver(request(u"a"_s));
    deliverer.deliver(request(u"b"_s));
    deliverer.deliver(request(u"a"_s));
    settle();
    EXPECT_EQ(desktop->capabilityCalls, 1);
    desktop->release();
    desktop->hold(u"Notify"_s);
    ASSERT_TRUE(showsCount(2));
    deliverer.deliver(request(u"a"_s));
    settle();
    desktop->release();
    settle();
    EXPECT_EQ(titles(), (QStringList{u"a"_s, u"b"_s}));
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(opened(), QStringList{u"https://meet.example/a"_s});
}

TEST_F(NotificationDelivererTest, ASlowServerMayBecomeTooSlow) {
    startServer(u"GetCapabilities"_s);
    deliverer.deliver(request(u"a"_s));
    settle();
    clock.advance(10min + 1us);
    desktop->release();
    settle();
    EXPECT_EQ(desktop->notifyCalls, 0);
}

TEST_F(NotificationDelivererTest, AServerThatIsNotReadyYetIsAskedAgain) {
    startServer();
    desktop->refuse(2);
    deliverer.deliver(request(u"a"_s));
    for (int refusal = 1; refusal <= 2; ++refusal) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return desktop->notifyCalls == refusal; }, patience));
        settle();
        clock.advance(30s);
    }
    EXPECT_TRUE(showsCount(1));
}

TEST_F(NotificationDelivererTest, AServerThatRefusesForGoodIsAskedFiveTimes) {
    startServer();
    desktop->refuse(100);
    deliverer.deliver(request(u"a"_s));
    for (int refusal = 1; refusal <= 5; ++refusal) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return desktop->notifyCalls == refusal; }, patience));
        settle();
        clock.advance(30s);
    }
    settle();
    desktop->refuse(0);
    deliverAndConfirm(u"b"_s);
    EXPECT_EQ(titles(), QStringList{u"b"_s});
}

TEST_F(NotificationDelivererTest, WhatAServerRefusedIsTriedAgainWithTheNext) {
    startServer();
    desktop->refuse(1);
    deliverer.deliver(request(u"a"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop->notifyCalls == 1; }, patience));
    settle();
    deliverer.deliver(request(u"b"_s));
    EXPECT_TRUE(showsCount(2));
    EXPECT_EQ(titles(), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(NotificationDelivererTest, GivesUpOnWhatCrashesEveryServer) {
    deliverer.deliver(request(u"a"_s));
    for (int i = 0; i < 5; ++i) {
        startServer(u"Notify"_s);
        ASSERT_TRUE(showsCount(1));
        desktop.reset();
    }
    startServer();
    deliverAndConfirm(u"b"_s);
    EXPECT_EQ(titles(), QStringList{u"b"_s});
}

TEST_F(NotificationDelivererTest, ForgetsWhatNoServerWasAskedToShow) {
    deliverer.deliver(request(u"a"_s));
    settle();
    deliverer.forgetUnsent();
    startServer();
    deliverAndConfirm(u"b"_s);
    EXPECT_EQ(titles(), QStringList{u"b"_s});
}

TEST_F(NotificationDelivererTest, ForgettingDoesNotConfuseAnAnswerThatIsUnderWay) {
    startServer(u"Notify"_s);
    deliverer.deliver(request(u"a"_s));
    ASSERT_TRUE(showsCount(1));
    deliverer.forgetUnsent();
    desktop->release();
    settle();
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(responses.size(), 1);
}

TEST_F(NotificationDelivererTest, OutlivesTheBus) {
    startServer();
    deliverAndConfirm(u"a"_s);
    bus.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !connection.isConnected(); }, patience));
    deliverer.deliver(request(u"b"_s));
    QCoreApplication::processEvents();
    EXPECT_EQ(desktop->shown.size(), 1);
}

TEST(NotificationDelivererWithoutBus, StaysSilent) {
    FakeClock clock;
    NotificationServer server{QDBusConnection(u"no such connection"_s)};
    NotificationDeliverer deliverer(server, clock);
    deliverer.deliver({.identifier = u"a"_s, .fireTime = clock.now()});
    QCoreApplication::processEvents();
}
