#include "linux/notifications/NotificationDelivererFixture.h"

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;

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

TEST_F(NotificationDelivererTest, KnowsWhoTheServerIs) {
    startServer();
    desktop->program = u"Xfce Notify Daemon"_s;
    deliverer.deliver(request(u"Standup"_s));
    ASSERT_TRUE(showsCount(1));
    EXPECT_EQ(desktop->shown[0].actions, (QStringList{u"button"_s, u"Join"_s}));
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
