#include "texts/PanelTexts.h"

#include "briefing/TextBounds.h"
#include "support/Builders.h"

#include <gtest/gtest.h>

#include <limits>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant panelNow = at("2025-03-04T10:00:00Z");

std::vector<BriefEvent> upcoming(const std::vector<BriefEvent>& events, Instant when = panelNow) {
    return PanelTexts::upcomingEvents(makeBriefing(events), when);
}

QString summary(const std::vector<BriefEvent>& events, Instant when = panelNow) {
    return PanelTexts::eventsSummary(makeBriefing(events), upcoming(events, when));
}

BriefEvent ended(const QString& title) {
    return makeEvent({.title = title, .start = panelNow - 2h, .end = panelNow - 1h});
}

QString clockLabel(const EventFields& fields, const char* zone = "UTC") {
    return PanelTexts::timeLabel(makeEvent(fields), QTimeZone(zone), QLocale(u"en_US"_s));
}

Habit habit(qint64 count, qint64 target, qint64 streak, bool done = false) {
    return {u"read"_s, u"Read"_s, done, count, target, streak};
}

Chore chore(std::optional<qint64> daysOverdue) {
    return {u"water"_s, u"Water plants"_s, u"Balcony"_s, daysOverdue};
}

} // namespace

TEST(UpcomingEvents, AnEventIsUpcomingUntilItsEndAndOverASecondLater) {
    const std::vector events{makeEvent({.start = panelNow - 1h, .end = panelNow})};
    EXPECT_EQ(upcoming(events), events);
    EXPECT_TRUE(upcoming(events, panelNow + 1s).empty());
}

TEST(UpcomingEvents, AllDayAndOpenEndedEventsAreNeverOver) {
    const std::vector events{
        makeEvent({.start = panelNow - 48h, .end = panelNow - 24h, .allDay = true}),
        makeEvent({.start = panelNow - 48h}),
        makeEvent({}),
    };
    EXPECT_EQ(upcoming(events), events);
}

TEST(UpcomingEvents, AnEventWithoutAStartGoesWithItsEnd) {
    EXPECT_TRUE(upcoming({makeEvent({.end = panelNow - 1s})}).empty());
    EXPECT_EQ(upcoming({makeEvent({.end = panelNow + 1s})}).size(), 1U);
}

TEST(UpcomingEvents, KeepOrderAndDuplicates) {
    const BriefEvent late =
        makeEvent({.title = u"Late"_s, .start = panelNow + 5h, .end = panelNow + 6h});
    const BriefEvent early =
        makeEvent({.title = u"Early"_s, .start = panelNow + 1h, .end = panelNow + 2h});
    EXPECT_EQ(upcoming({late, ended(u"Past"_s), early, late}), (std::vector{late, early, late}));
}

TEST(EventsSummary, CountsWhatIsLeft) {
    EXPECT_EQ(summary({makeEvent({})}), u"1 left"_s);
    EXPECT_EQ(summary({makeEvent({}), makeEvent({})}), u"2 left"_s);
    EXPECT_EQ(summary(std::vector(13, makeEvent({}))), u"13 left"_s);
    EXPECT_EQ(summary(std::vector(1234, makeEvent({}))), u"1234 left"_s);
}

TEST(EventsSummary, TellsAFinishedDayFromAnEmptyOne) {
    EXPECT_EQ(summary({}), u"nothing scheduled"_s);
    EXPECT_EQ(summary({ended(u"A"_s), ended(u"B"_s)}), u"done for today"_s);
    EXPECT_EQ(summary({ended(u"A"_s), makeEvent({.allDay = true})}, panelNow + 9h), u"1 left"_s);
}

TEST(EventsText, SaysWhyThereAreNoRows) {
    EXPECT_EQ(PanelTexts::noEventsText(makeBriefing()), u"Nothing scheduled"_s);
    EXPECT_EQ(PanelTexts::noEventsText(makeBriefing({ended(u"A"_s)})), u"Nothing left today"_s);
    EXPECT_EQ(PanelTexts::moreText(3), u"+3 more"_s);
    EXPECT_EQ(PanelTexts::moreEventsText(3), u"+3 more today"_s);
    EXPECT_EQ(PanelTexts::moreEventsText(1234), u"+1234 more today"_s);
}

TEST(SectionSummaries, TakeTheProducersFigures) {
    EXPECT_EQ(PanelTexts::habitsSummary({.done = 2, .total = 5, .items = {}}), u"2/5 done"_s);
    EXPECT_EQ(
        PanelTexts::habitsSummary({.done = -1, .total = 1000, .items = {}}), u"-1/1000 done"_s);
    EXPECT_EQ(PanelTexts::choresSummary({.count = 7, .top = {chore(1), chore(2)}}), u"7 due"_s);
    EXPECT_EQ(PanelTexts::choresSummary({.count = 12345, .top = {}}), u"12345 due"_s);
}

TEST(TimeLabel, IsTheStartInTheUsersZone) {
    EXPECT_EQ(clockLabel({.start = at("2025-03-04T09:05:00Z")}), u"9:05 am"_s);
    EXPECT_EQ(clockLabel({.start = at("2025-03-04T00:15:00Z")}), u"12:15 am"_s);
    EXPECT_EQ(clockLabel({.start = at("2025-03-04T12:30:00Z")}), u"12:30 pm"_s);
    EXPECT_EQ(clockLabel({.start = at("2025-03-04T13:00:00Z")}), u"1:00 pm"_s);
    EXPECT_EQ(clockLabel({.start = at("2025-03-04T08:05:00Z")}, "Europe/Berlin"), u"9:05 am"_s);
}

TEST(TimeLabel, OfAnAllDayEventIgnoresItsStart) {
    EXPECT_EQ(clockLabel({.start = panelNow, .allDay = true}), u"all-day"_s);
    EXPECT_EQ(clockLabel({.allDay = true}), u"all-day"_s);
}

TEST(TimeLabel, IsEmptyWithoutAStart) {
    EXPECT_EQ(clockLabel({}), QString());
}

TEST(OverdueLabel, CountsDaysFromTheSecondOn) {
    EXPECT_EQ(PanelTexts::overdueLabel(chore(std::nullopt)), u"never done"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(0)), u"due today"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(-2)), u"due today"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(1)), u"1d over"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(3)), u"3d over"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(1500)), u"1500d over"_s);
    EXPECT_EQ(PanelTexts::overdueLabel(chore(std::numeric_limits<qint64>::min())), u"due today"_s);
}

TEST(OverdueLabel, OnlyAFullDayIsOverdue) {
    EXPECT_FALSE(PanelTexts::isOverdue(chore(std::nullopt)));
    EXPECT_FALSE(PanelTexts::isOverdue(chore(0)));
    EXPECT_FALSE(PanelTexts::isOverdue(chore(-2)));
    EXPECT_TRUE(PanelTexts::isOverdue(chore(1)));
    EXPECT_TRUE(PanelTexts::isOverdue(chore(5)));
}

TEST(RowToolTips, SayWhatAClickDoes) {
    EXPECT_EQ(PanelTexts::habitToolTip(habit(0, 1, 0)), u"Toggle “Read”"_s);
    EXPECT_EQ(PanelTexts::habitToolTip(habit(0, 0, 0)), u"Toggle “Read”"_s);
    EXPECT_EQ(PanelTexts::habitToolTip(habit(0, -3, 0)), u"Toggle “Read”"_s);
    EXPECT_EQ(PanelTexts::habitToolTip(habit(0, 2, 0)), u"Log one (0/2)"_s);
    EXPECT_EQ(PanelTexts::habitToolTip(habit(2, 8, 0)), u"Log one (2/8)"_s);
    EXPECT_EQ(PanelTexts::choreToolTip(chore(1)), u"Mark “Water plants” done"_s);
    EXPECT_EQ(PanelTexts::foldToolTip(u"Next up"_s, false), u"Collapse Next up"_s);
    EXPECT_EQ(PanelTexts::foldToolTip(u"Next up"_s, true), u"Expand Next up"_s);
}

TEST(HabitFigures, AreShownOnlyWhereTheySaySomething) {
    EXPECT_EQ(PanelTexts::countLabel(habit(0, 1, 0)), std::nullopt);
    EXPECT_EQ(PanelTexts::countLabel(habit(2, 8, 0)), u"2/8"_s);
    EXPECT_EQ(PanelTexts::countLabel(habit(0, 2, 0)), u"0/2"_s);
    EXPECT_EQ(PanelTexts::streakLabel(habit(0, 1, 0)), std::nullopt);
    EXPECT_EQ(PanelTexts::streakLabel(habit(0, 1, -1)), std::nullopt);
    EXPECT_EQ(PanelTexts::streakLabel(habit(0, 1, 1)), u"1🔥"_s);
    EXPECT_EQ(PanelTexts::streakLabel(habit(0, 1, 12)), u"12🔥"_s);
}

TEST(AccessibleNames, TellNameAndState) {
    EXPECT_EQ(PanelTexts::habitAccessibleName(habit(0, 1, 4)), u"Read, not done, streak 4"_s);
    EXPECT_EQ(PanelTexts::habitAccessibleName(habit(1, 1, 0, true)), u"Read, done"_s);
    EXPECT_EQ(PanelTexts::habitAccessibleName(habit(2, 8, 0)), u"Read, not done, 2 of 8"_s);
    EXPECT_EQ(PanelTexts::choreAccessibleName(chore(3)), u"Water plants, 3 days overdue"_s);
    EXPECT_EQ(PanelTexts::choreAccessibleName(chore(1)), u"Water plants, 1 day overdue"_s);
    EXPECT_EQ(PanelTexts::choreAccessibleName(chore(0)), u"Water plants, due today"_s);
    EXPECT_EQ(PanelTexts::choreAccessibleName(chore(std::nullopt)), u"Water plants, never done"_s);
    EXPECT_EQ(
        PanelTexts::eventAccessibleName(makeEvent({.location = u"Room 4"_s}), u"9:30 am"_s),
        u"9:30 am, Standup, Room 4"_s);
    EXPECT_EQ(PanelTexts::eventAccessibleName(makeEvent({.location = u""_s}), {}), u"Standup"_s);
}

TEST(AccessibleNames, TellTheStateBehindAnEndlessName) {
    const QString endless(100'000, u'x');
    Habit endlessHabit = habit(2, 8, 4);
    endlessHabit.name = endless;
    const QString beginning = endless.first(longestLine - 1) + u'…';
    EXPECT_EQ(
        PanelTexts::habitAccessibleName(endlessHabit),
        beginning + u", not done, 2 of 8, streak 4"_s);
    Chore endlessChore = chore(3);
    endlessChore.name = endless;
    EXPECT_EQ(PanelTexts::choreAccessibleName(endlessChore), beginning + u", 3 days overdue"_s);
    endlessChore.daysOverdue = 0;
    EXPECT_EQ(PanelTexts::choreAccessibleName(endlessChore), beginning + u", due today"_s);
    EXPECT_EQ(
        PanelTexts::eventAccessibleName(
            makeEvent({.title = endless, .location = endless}), u"9:30 am"_s),
        u"9:30 am, "_s + beginning + u", "_s + beginning);
}

TEST(RowToolTips, AreNoLongerThanIsRead) {
    const QString endless(100'000, u'x');
    const QString beginning = endless.first(longestLine - 1) + u'…';
    Habit endlessHabit = habit(0, 1, 0);
    endlessHabit.name = endless;
    EXPECT_EQ(PanelTexts::habitToolTip(endlessHabit), u"Toggle “"_s + beginning + u"”"_s);
    Chore endlessChore = chore(3);
    endlessChore.name = endless;
    EXPECT_EQ(PanelTexts::choreToolTip(endlessChore), u"Mark “"_s + beginning + u"” done"_s);
    EXPECT_EQ(PanelTexts::joinText(makeEvent({.title = endless})), u"Join "_s + beginning);
    EXPECT_EQ(PanelTexts::joinText(makeEvent({})), u"Join Standup"_s);
}
