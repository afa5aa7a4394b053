#include "reminders/NotificationService.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakePreferences.h"
#include "platform/Spawn.h"
#include "support/Builders.h"

#include <gtest/gtest.h>

#include <optional>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class NotificationServiceTest : public testing::Test {
protected:
    void enable(bool enabled) {
        preferences.set(u"notifyBeforeMeetings"_s, enabled ? u"true"_s : u"false"_s);
    }

    /// What was called since the last time this was asked.
    QStringList calls() { return std::exchange(center.calls, {}); }

    QStringList pending() const {
        QStringList identifiers;
        for (const NotificationRequest& request : center.pending)
            identifiers += request.identifier;
        return identifiers;
    }

    /// Has the service granted before the test begins.
    void authorize() {
        spawn(service->requestAuthorization());
        calls();
    }

    BriefEvent meeting(const QString& title, std::chrono::seconds startsIn) const {
        return makeEvent({.title = title, .start = clock.now() + startsIn});
    }

    FakeClock clock;
    FakePreferences preferences;
    FakeNotificationCenter center;
    std::optional<NotificationService> service{std::in_place, center, preferences, clock};
};

} // namespace

TEST_F(NotificationServiceTest, AsksForPermissionUnlessTheUserWantsNoReminders) {
    spawn(service->requestAuthorization());
    EXPECT_EQ(calls(), QStringList{u"authorize"_s});
    enable(false);
    spawn(service->requestAuthorization());
    EXPECT_EQ(calls(), QStringList());
    enable(true);
    spawn(service->requestAuthorization());
    EXPECT_EQ(calls(), QStringList{u"authorize"_s});
}

TEST_F(NotificationServiceTest, AMalformedChoiceCountsAsYes) {
    preferences.set(u"notifyBeforeMeetings"_s, u"perhaps"_s);
    spawn(service->requestAuthorization());
    EXPECT_EQ(calls(), QStringList{u"authorize"_s});
}

TEST_F(NotificationServiceTest, OffersToJoinByTheLinksThatTheUserAllows) {
    BriefEvent standup = meeting(u"Standup"_s, 1h);
    standup.meetingUrl = u"slack://open"_s;
    service->scheduleUpcoming(makeBriefing({standup}));
    EXPECT_EQ(center.pending.at(0).button, std::nullopt);
    EXPECT_TRUE(preferences.setValue(u"linkSchemes"_s, u"slack"_s));
    service->scheduleUpcoming(makeBriefing({standup}));
    EXPECT_EQ(center.pending.at(0).button, u"Join"_s);
}

TEST_F(NotificationServiceTest, OnceGrantedEveryPassListsAndAdds) {
    const BriefEvent standup = meeting(u"Standup"_s, 1h);
    const QStringList pass{u"list"_s, u"add "_s + standup.id()};
    service->scheduleUpcoming(makeBriefing({standup}));
    EXPECT_EQ(calls(), QStringList{u"authorize"_s} + pass);
    service->scheduleUpcoming(makeBriefing({standup}));
    EXPECT_EQ(calls(), pass);
    EXPECT_EQ(pending(), QStringList{standup.id()});
}

TEST_F(NotificationServiceTest, ARefusalIsAskedAboutAgainOnEveryPass) {
    center.grants = false;
    center.pending = {{.identifier = u"old"_s}};
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    service->scheduleUpcoming(makeBriefing());
    EXPECT_EQ(calls(), (QStringList{u"authorize"_s, u"authorize"_s}));
    EXPECT_EQ(pending(), QStringList{u"old"_s});
    center.grants = true;
    service->scheduleUpcoming(makeBriefing());
    EXPECT_EQ(calls(), (QStringList{u"authorize"_s, u"list"_s, u"remove old"_s}));
}

TEST_F(NotificationServiceTest, ALaterRefusalTakesThePermissionBack) {
    authorize();
    center.grants = false;
    spawn(service->requestAuthorization());
    calls();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    EXPECT_EQ(calls(), QStringList{u"authorize"_s});
}

TEST_F(NotificationServiceTest, SwitchedOffEveryPassWithdrawsEverythingAndAsksNothing) {
    enable(false);
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    service->scheduleUpcoming(makeBriefing());
    EXPECT_EQ(calls(), (QStringList{u"remove all"_s, u"remove all"_s}));
}

TEST_F(NotificationServiceTest, SwitchingOffKeepsThePermission) {
    authorize();
    enable(false);
    spawn(service->requestAuthorization());
    enable(true);
    service->scheduleUpcoming(makeBriefing());
    EXPECT_EQ(calls(), QStringList{u"list"_s});
}

TEST_F(NotificationServiceTest, SwitchedOffWhileAnotherPassAsksItWithdrawsAtOnce) {
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    enable(false);
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    EXPECT_EQ(calls(), (QStringList{u"authorize"_s, u"remove all"_s}));
}

TEST_F(NotificationServiceTest, SwitchedOffWhileItAsksForPermissionItSchedulesNothing) {
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    enable(false);
    while (center.heldCount() > 0)
        center.answer();
    EXPECT_EQ(calls(), QStringList{u"authorize"_s});
}

TEST_F(NotificationServiceTest, SwitchedOffWhileItAsksWhatIsPendingItSchedulesNothing) {
    authorize();
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    enable(false);
    center.answer();
    EXPECT_EQ(calls(), QStringList{u"list"_s});
    enable(true);
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    center.answer();
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(NotificationServiceTest, AnEmptyDayWithdrawsEverythingThatIsPending) {
    authorize();
    center.pending = {{.identifier = u"a"_s}, {.identifier = u"b"_s}};
    service->scheduleUpcoming(makeBriefing());
    EXPECT_EQ(calls(), (QStringList{u"list"_s, u"remove a,b"_s}));
}

TEST_F(NotificationServiceTest, WithdrawsNothingWhenNothingIsStale) {
    authorize();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    EXPECT_TRUE(calls().filter(u"remove"_s).isEmpty());
}

TEST_F(NotificationServiceTest, AMeetingThatMovesIsExchangedInOnePass) {
    authorize();
    const BriefEvent before = meeting(u"Standup"_s, 1h);
    const BriefEvent after = meeting(u"Standup"_s, 2h);
    service->scheduleUpcoming(makeBriefing({before}));
    calls();
    service->scheduleUpcoming(makeBriefing({after}));
    EXPECT_EQ(
        calls(), (QStringList{u"list"_s, u"remove "_s + before.id(), u"add "_s + after.id()}));
    EXPECT_EQ(pending(), QStringList{after.id()});
}

TEST_F(NotificationServiceTest, AMeetingThatIsRenamedIsExchanged) {
    authorize();
    const BriefEvent after = meeting(u"Daily"_s, 1h);
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    service->scheduleUpcoming(makeBriefing({after}));
    EXPECT_EQ(pending(), QStringList{after.id()});
}

TEST_F(NotificationServiceTest, AMeetingThatIsCloserThanFiveMinutesIsWithdrawn) {
    authorize();
    const Briefing day = makeBriefing({meeting(u"Standup"_s, 10min)});
    service->scheduleUpcoming(day);
    EXPECT_EQ(pending().size(), 1);
    clock.advance(5min);
    service->scheduleUpcoming(day);
    EXPECT_EQ(pending(), QStringList());
}

TEST_F(NotificationServiceTest, AMeetingComesInOnceItIsWithinSixHours) {
    authorize();
    const Briefing day = makeBriefing({meeting(u"Standup"_s, 6h)});
    service->scheduleUpcoming(day);
    EXPECT_EQ(pending(), QStringList());
    clock.advance(1s);
    service->scheduleUpcoming(day);
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(NotificationServiceTest, TwoEventsWithTheSameTitleAndStartAreOneReminder) {
    authorize();
    const BriefEvent once = meeting(u"Standup"_s, 1h);
    service->scheduleUpcoming(makeBriefing({once, once}));
    EXPECT_EQ(pending(), QStringList{once.id()});
}

TEST_F(NotificationServiceTest, OneMomentDecidesOnAllEventsAndAnotherWhenTheyFire) {
    authorize();
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Soon"_s, 301s), meeting(u"Later"_s, 6h)}));
    clock.advance(10s);
    center.answer();
    ASSERT_EQ(center.pending.size(), 1U);
    EXPECT_EQ(center.pending[0].title, u"Soon"_s);
    EXPECT_EQ(center.pending[0].fireTime, clock.now() + 1s);
}

TEST_F(NotificationServiceTest, WorksOnACopyOfItsBriefing) {
    center.hold();
    {
        const Briefing passing = makeBriefing({meeting(u"Standup"_s, 1h)});
        service->scheduleUpcoming(passing);
    }
    center.answer();
    center.answer();
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(NotificationServiceTest, TheLaterOfTwoOverlappingPassesWins) {
    authorize();
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Old"_s, 1h), meeting(u"Both"_s, 2h)}));
    service->scheduleUpcoming(makeBriefing({meeting(u"Both"_s, 2h), meeting(u"New"_s, 3h)}));
    center.answer();
    EXPECT_EQ(pending(), (QStringList{meeting(u"Old"_s, 1h).id(), meeting(u"Both"_s, 2h).id()}));
    center.answer();
    EXPECT_EQ(pending(), (QStringList{meeting(u"Both"_s, 2h).id(), meeting(u"New"_s, 3h).id()}));
}

TEST_F(NotificationServiceTest, TwoPassesMayBothBeAskingForPermission) {
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Old"_s, 1h)}));
    service->scheduleUpcoming(makeBriefing({meeting(u"New"_s, 1h)}));
    while (center.heldCount() > 0)
        center.answer();
    EXPECT_EQ(pending(), QStringList{meeting(u"New"_s, 1h).id()});
}

TEST_F(NotificationServiceTest, MayEndWhileItAsksForPermission) {
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    spawn(service->requestAuthorization());
    service.reset();
    center.answer();
    center.answer();
    EXPECT_EQ(calls(), (QStringList{u"authorize"_s, u"authorize"_s}));
}

TEST_F(NotificationServiceTest, MayEndWhileItAsksWhatIsPending) {
    authorize();
    center.hold();
    service->scheduleUpcoming(makeBriefing({meeting(u"Standup"_s, 1h)}));
    service.reset();
    center.answer();
    EXPECT_EQ(calls(), QStringList{u"list"_s});
}
