#include "linux/notifications/NotificationDeliverer.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeNotificationServer.h"
#include "support/BusProbe.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class NotificationDelivererTest : public testing::Test {
protected:
    /// Starts the desktop's server, which answers no calls of `heldMethod`; the one before has to
    /// be gone. It is known on return.
    void startServer(const QString& heldMethod = {}) {
        desktop = std::make_unique<FakeNotificationServer>(bus.connect(), heldMethod);
        settle();
    }

    NotificationRequest request(const QString& title) const {
        return {
            .identifier = title + u"|1.0"_s,
            .title = title,
            .body = u"Starts in 5 min"_s,
            .userInfo = {{u"meetingUrl"_s, u"https://meet.example/"_s + title}},
            .button = u"Join"_s,
            .fireTime = clock.now(),
        };
    }

    /// Waits until everything that `sender` sent before has been heard.
    void settle(const QDBusConnection& sender) const {
        BusProbe(sender, connection.baseService())
            .call(u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
        QCoreApplication::processEvents();
    }

    void settle() const { settle(desktop ? desktop->bus() : other); }

    bool showsCount(qsizetype count) {
        return QTest::qWaitFor([&] { return desktop->shown.size() == count; }, patience);
    }

    /// Delivers, and waits until the deliverer has heard that it is shown.
    void deliverAndConfirm(const QString& title) {
        const auto count = desktop->shown.size() + 1;
        deliverer.deliver(request(title));
        ASSERT_TRUE(showsCount(count));
        settle();
    }

    QStringList opened() const {
        QStringList links;
        for (const auto& response : responses)
            links += response.at(0).toMap().value(u"meetingUrl"_s).toString();
        return links;
    }

    QStringList titles() const {
        QStringList shown;
        for (const auto& notification : desktop->shown)
            shown += notification.summary;
        return shown;
    }

    PrivateBus bus;
    FakeClock clock;
    QDBusConnection connection = bus.connect();
    NotificationServer server{connection};
    NotificationDeliverer deliverer{server, clock};
    QSignalSpy responses{&deliverer, &NotificationDeliverer::responded};
    QDBusConnection other = bus.connect();
    std::unique_ptr<FakeNotificationServer> desktop;
};

} // namespace

TEST_F(NotificationDelivererTest, HasANotificationShown) {
    startServer();
    deliverAndConfirm(u"Standup"_s);
    const auto& shown = desktop->shown.constFirst();
    EXPECT_EQ(shown.summary, u"Standup"_s);
    EXPECT_EQ(shown.body, u"Starts in 5 min"_s);
    EXPECT_EQ(shown.actions, (QStringList{u"default"_s, u""_s, u"button"_s, u"Join"_s}));
    EXPECT_STREQ(shown.hints.value(u"urgency"_s).typeName(), "uchar");
    EXPECT_EQ(shown.replacesId, 0U);
}

TEST_F(NotificationDelivererTest, RespectsWhatTheServerCanDo) {
    startServer();
    desktop->capabilities = QStringList{u"body"_s};
    NotificationRequest tricky = request(u"Standup"_s);
    tricky.body = u"R&D"_s;
    deliverer.deliver(tricky);
    ASSERT_TRUE(showsCount(1));
    EXPECT_EQ(desktop->shown[0].actions, QStringList());
    EXPECT_EQ(desktop->shown[0].body, u"R&D"_s);
}

TEST_F(NotificationDelivererTest, AClickAndTheButtonRespondAlike) {
    startServer();
    deliverAndConfirm(u"a"_s);
    deliverAndConfirm(u"b"_s);
    Q_EMIT desktop->ActionInvoked(2, u"button"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(opened(), (QStringList{u"https://meet.example/b"_s, u"https://meet.example/a"_s}));
    EXPECT_EQ(responses[0].at(1).toByteArray(), QByteArray());
}

TEST_F(NotificationDelivererTest, PassesTheActivationTokenOnWithTheClick) {
    startServer();
    deliverAndConfirm(u"a"_s);
    deliverAndConfirm(u"b"_s);
    Q_EMIT desktop->ActivationToken(1, u"token-1"_s);
    Q_EMIT desktop->ActivationToken(9, u"somebody else's"_s);
    Q_EMIT desktop->ActionInvoked(2, u"default"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    ASSERT_EQ(responses.size(), 2);
    EXPECT_EQ(responses[0].at(1).toByteArray(), QByteArray());
    EXPECT_EQ(responses[1].at(1).toByteArray(), QByteArray("token-1"));
}

TEST_F(NotificationDelivererTest, AnIdIsUsedOnce) {
    startServer();
    deliverAndConfirm(u"a"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    Q_EMIT desktop->NotificationClosed(1, 2);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(responses.size(), 1);
}

TEST_F(NotificationDelivererTest, AClosedNotificationOpensNothing) {
    startServer();
    deliverAndConfirm(u"a"_s);
    Q_EMIT desktop->NotificationClosed(1, 1);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_TRUE(responses.isEmpty());
}

TEST_F(NotificationDelivererTest, IgnoresOtherProgramsNotifications) {
    startServer();
    deliverAndConfirm(u"a"_s);
    for (const uint id : {0U, 2U, 4'294'967'295U}) {
        Q_EMIT desktop->ActionInvoked(id, u"default"_s);
        Q_EMIT desktop->NotificationClosed(id, 1);
    }
    settle();
    EXPECT_TRUE(responses.isEmpty());
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(responses.size(), 1);
}

TEST_F(NotificationDelivererTest, IgnoresWhoIsNotTheServer) {
    startServer();
    deliverAndConfirm(u"a"_s);
    FakeNotificationServer impostor(bus.connect(), {}, false);
    Q_EMIT impostor.ActionInvoked(1, u"default"_s);
    Q_EMIT impostor.NotificationClosed(1, 1);
    settle(impostor.bus());
    EXPECT_TRUE(responses.isEmpty());
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_EQ(responses.size(), 1);
}

TEST_F(NotificationDelivererTest, TheSameMeetingNeverStandsTwice) {
    startServer();
    deliverAndConfirm(u"a"_s);
    deliverAndConfirm(u"b"_s);
    deliverAndConfirm(u"a"_s);
    EXPECT_EQ(desktop->shown[2].replacesId, 1U);
    Q_EMIT desktop->NotificationClosed(1, 1);
    settle();
    deliverAndConfirm(u"a"_s);
    EXPECT_EQ(desktop->shown[3].replacesId, 0U);
}

TEST_F(NotificationDelivererTest, FollowsAServerThatRenumbersWhatIsReplaced) {
    startServer();
    desktop->renumber();
    deliverAndConfirm(u"a"_s);
    deliverAndConfirm(u"a"_s);
    Q_EMIT desktop->ActionInvoked(1, u"default"_s);
    settle();
    EXPECT_TRUE(responses.isEmpty());
    Q_EMIT desktop->ActionInvoked(2, u"default"_s);
    settle();
    EXPECT_EQ(responses.size(), 1);
}

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
