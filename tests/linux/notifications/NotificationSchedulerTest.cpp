#include "linux/notifications/NotificationScheduler.h"

#include "fakes/FakeClock.h"

#include <gtest/gtest.h>

#include <utility>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class NotificationSchedulerTest : public testing::Test {
protected:
    void addIn(const QString& identifier, std::chrono::microseconds delay) {
        scheduler.add({.identifier = identifier, .fireTime = clock.now() + delay});
    }

    /// What was handed over since the last time this was asked.
    QStringList delivered() { return std::exchange(m_delivered, {}); }

private:
    QStringList m_delivered;

protected:
    FakeClock clock;
    NotificationScheduler scheduler{
        clock, [this](const NotificationRequest& request) { m_delivered += request.identifier; }};
};

} // namespace

TEST_F(NotificationSchedulerTest, HandsEachOverAtItsTimeAndOnce) {
    addIn(u"second"_s, 2h);
    addIn(u"first"_s, 1h);
    EXPECT_EQ(scheduler.pendingIdentifiers(), (QStringList{u"second"_s, u"first"_s}));
    clock.advance(1h - 1us);
    EXPECT_EQ(delivered(), QStringList());
    clock.advance(1us);
    EXPECT_EQ(delivered(), QStringList{u"first"_s});
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList{u"second"_s});
    clock.advance(24h);
    EXPECT_EQ(delivered(), QStringList{u"second"_s});
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList());
}

TEST_F(NotificationSchedulerTest, OneWhoseTimeHasPassedIsHandedOverAtOnceButNotWhileItIsAdded) {
    addIn(u"late"_s, -1min);
    EXPECT_EQ(delivered(), QStringList());
    clock.advance(0s);
    EXPECT_EQ(delivered(), QStringList{u"late"_s});
}

TEST_F(NotificationSchedulerTest, AnIdentifierStandsForOneRequest) {
    addIn(u"a"_s, 1h);
    addIn(u"a"_s, 2h);
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList{u"a"_s});
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList());
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList{u"a"_s});
}

TEST_F(NotificationSchedulerTest, AReplacementMayComeEarlier) {
    addIn(u"a"_s, 2h);
    addIn(u"a"_s, 1h);
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList{u"a"_s});
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList());
}

TEST_F(NotificationSchedulerTest, WithdrawsByIdentifier) {
    addIn(u"a"_s, 1h);
    addIn(u"b"_s, 1h);
    addIn(u"c"_s, 1h);
    scheduler.remove({u"c"_s, u"unknown"_s, u"a"_s});
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList{u"b"_s});
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList{u"b"_s});
}

TEST_F(NotificationSchedulerTest, WithdrawsEverything) {
    addIn(u"a"_s, 1h);
    addIn(u"b"_s, 2h);
    scheduler.removeAll();
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList());
    clock.advance(3h);
    EXPECT_EQ(delivered(), QStringList());
    addIn(u"c"_s, 1h);
    clock.advance(1h);
    EXPECT_EQ(delivered(), QStringList{u"c"_s});
}

TEST_F(NotificationSchedulerTest, WakingFromSleepDeliversWhatIsStillWorthIt) {
    addIn(u"missed"_s, 49min);
    addIn(u"just"_s, 50min);
    addIn(u"later"_s, 2h);
    clock.suspend(1h);
    EXPECT_EQ(delivered(), QStringList{u"just"_s});
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList{u"later"_s});
    clock.suspend(8h);
    EXPECT_EQ(delivered(), QStringList());
    EXPECT_EQ(scheduler.pendingIdentifiers(), QStringList());
}

TEST_F(NotificationSchedulerTest, FollowsAClockThatIsSet) {
    const Instant before = clock.now();
    addIn(u"a"_s, 1h);
    clock.set(before - 3h);
    clock.advance(3h + 59min);
    EXPECT_EQ(delivered(), QStringList());
    clock.set(before + 1h + 5min);
    EXPECT_EQ(delivered(), QStringList{u"a"_s});
    clock.set(before);
    clock.advance(2h);
    EXPECT_EQ(delivered(), QStringList());
}

TEST_F(NotificationSchedulerTest, WhatIsDueIsNotPendingAlthoughTheAlarmHasNotRung) {
    QStringList found;
    const auto earlier =
        clock.at(clock.now() + 30min, [&] { found = scheduler.pendingIdentifiers(); });
    addIn(u"due"_s, 55min);
    addIn(u"later"_s, 2h);
    clock.suspend(1h);
    EXPECT_EQ(found, QStringList{u"later"_s});
    EXPECT_EQ(delivered(), QStringList{u"due"_s});
}

TEST_F(NotificationSchedulerTest, DeliveringMayAddTheNext) {
    std::optional<NotificationScheduler> chain;
    int count = 0;
    chain.emplace(clock, [&](const NotificationRequest& request) {
        ++count;
        chain->add({.identifier = request.identifier, .fireTime = clock.now() + 1h});
    });
    chain->add({.identifier = u"a"_s, .fireTime = clock.now() + 1h});
    clock.advance(3h);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(chain->pendingIdentifiers(), QStringList{u"a"_s});
}

TEST_F(NotificationSchedulerTest, LeavesNothingBehind) {
    int count = 0;
    {
        NotificationScheduler passing(clock, [&](const NotificationRequest&) { ++count; });
        passing.add({.identifier = u"a"_s, .fireTime = clock.now() + 1h});
    }
    clock.advance(2h);
    EXPECT_EQ(count, 0);
}
