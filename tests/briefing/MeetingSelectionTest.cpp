#include "briefing/MeetingSelection.h"

#include "support/Builders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const Instant now = at("2025-03-04T10:00:00Z");

BriefEvent meeting(const QString& title, std::chrono::seconds start, std::chrono::seconds end) {
    return makeEvent({.title = title, .start = now + start, .end = now + end});
}

BriefEvent openEnded(const QString& title, std::chrono::seconds start) {
    return makeEvent({.title = title, .start = now + start});
}

std::vector<std::string> candidates(const Briefing& briefing) {
    std::vector<std::string> titles;
    for (const auto& event : briefing.eventsToday)
        if (isMeetingCandidate(event, now, backgroundThreshold))
            titles.push_back(event.title.toStdString());
    return titles;
}

std::optional<QString> next(const Briefing& briefing) {
    const auto event = nextMeeting(briefing, now, backgroundThreshold);
    return event ? std::optional(event->title) : std::nullopt;
}

} // namespace

TEST(MeetingCandidates, TheBackgroundThresholdIsSixHours) {
    EXPECT_EQ(backgroundThreshold.count(), 21600.0);
}

TEST(MeetingCandidates, AnAllDayEventIsNone) {
    const auto allDay = makeEvent({.start = now + 10min, .end = now + 40min, .allDay = true});
    EXPECT_THAT(candidates(makeBriefing({allDay})), IsEmpty());
    EXPECT_EQ(next(makeBriefing({allDay})), std::nullopt);
}

TEST(MeetingCandidates, AnEventWithoutAStartIsNone) {
    EXPECT_THAT(candidates(makeBriefing({makeEvent({.end = now + 10min})})), IsEmpty());
}

TEST(MeetingCandidates, SixHoursAreABackgroundBlock) {
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, 1h, 7h)})), IsEmpty());
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, 1h, 9h)})), IsEmpty());
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, 1h, 7h - 1s)})), ElementsAre("A"));
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, 1h, 6h + 59min)})), ElementsAre("A"));
}

TEST(MeetingCandidates, TheThresholdIsTheCallers) {
    const auto event = meeting(u"A"_s, 1h, 2h);
    EXPECT_FALSE(isMeetingCandidate(event, now, Seconds(3600)));
    EXPECT_TRUE(isMeetingCandidate(event, now, Seconds(3600.5)));
}

TEST(MeetingCandidates, WithoutAnEndItCountsUntilItStarts) {
    EXPECT_THAT(candidates(makeBriefing({openEnded(u"A"_s, 1s)})), ElementsAre("A"));
    EXPECT_THAT(candidates(makeBriefing({openEnded(u"A"_s, 20h)})), ElementsAre("A"));
    EXPECT_THAT(candidates(makeBriefing({openEnded(u"A"_s, 0s)})), IsEmpty());
    EXPECT_THAT(candidates(makeBriefing({openEnded(u"A"_s, -1s)})), IsEmpty());
}

TEST(MeetingCandidates, WhatEndsNowIsOver) {
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, -1h, 0s)})), IsEmpty());
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, -1h, -1s)})), IsEmpty());
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, -1h, 1s)})), ElementsAre("A"));
}

TEST(MeetingCandidates, AnEndBeforeTheStartIsNoBackgroundBlock) {
    EXPECT_THAT(candidates(makeBriefing({meeting(u"A"_s, 20h, 1h)})), ElementsAre("A"));
}

TEST(NextMeeting, IsFoundInAnyOrder) {
    auto briefing = makeBriefing({
        meeting(u"late"_s, 3h, 4h),
        meeting(u"b"_s, 1h, 3h),
        meeting(u"a"_s, 1h, 2h),
        meeting(u"running"_s, -1h, 1h),
        openEnded(u"c"_s, 1h),
    });
    EXPECT_EQ(next(briefing), u"b"_s);
    std::ranges::reverse(briefing.eventsToday);
    EXPECT_EQ(next(briefing), u"c"_s);
}

TEST(NextMeeting, AmongManyEqualStartsTheProducersFirst) {
    std::vector<BriefEvent> events;
    for (int i = 0; i < 100; ++i)
        events.push_back(meeting(QString::number(i), 1h, 2h));
    EXPECT_EQ(next(makeBriefing(events)), u"0"_s);
}

TEST(NextMeeting, OfAllDayEventsThereIsNoneWhateverTheProducerSays) {
    auto briefing = makeBriefing({
        makeEvent(
            {.title = u"holiday"_s, .start = now + 10min, .end = now + 40min, .allDay = true}),
        makeEvent({.title = u"fair"_s, .allDay = true}),
    });
    briefing.nextEvent = meeting(u"A"_s, 10min, 20min);
    EXPECT_THAT(candidates(briefing), IsEmpty());
    EXPECT_EQ(next(briefing), std::nullopt);
}

TEST(NextMeeting, NothingOfNothingWhateverTheProducerSays) {
    auto briefing = makeBriefing();
    briefing.nextEvent = meeting(u"A"_s, 10min, 20min);
    EXPECT_THAT(candidates(briefing), IsEmpty());
    EXPECT_EQ(next(briefing), std::nullopt);
}

TEST(NextMeeting, IsTheEarliestUpcoming) {
    EXPECT_EQ(next(makeBriefing({meeting(u"B"_s, 2h, 3h), meeting(u"A"_s, 1h, 2h)})), u"A"_s);
}

TEST(NextMeeting, AmongEqualStartsTheFirstListedWins) {
    EXPECT_EQ(next(makeBriefing({meeting(u"A"_s, 1h, 3h), meeting(u"B"_s, 1h, 2h)})), u"A"_s);
}

TEST(NextMeeting, AnUpcomingOneGoesBeforeOneInProgress) {
    EXPECT_EQ(next(makeBriefing({meeting(u"A"_s, -1h, 1h), meeting(u"B"_s, 9h, 10h)})), u"B"_s);
}

TEST(NextMeeting, OfThoseInProgressTheOneThatEndsFirst) {
    const auto briefing =
        makeBriefing({meeting(u"10:30"_s, -1h, 30min), meeting(u"10:15"_s, -30min, 15min)});
    EXPECT_EQ(next(briefing), u"10:15"_s);
}

TEST(NextMeeting, AmongEqualEndsTheFirstByStartWins) {
    const auto briefing =
        makeBriefing({meeting(u"later"_s, -30min, 15min), meeting(u"earlier"_s, -1h, 15min)});
    EXPECT_EQ(next(briefing), u"earlier"_s);
    const auto twins =
        makeBriefing({meeting(u"first"_s, -1h, 15min), meeting(u"second"_s, -1h, 15min)});
    EXPECT_EQ(next(twins), u"first"_s);
}

TEST(NextMeeting, WhatStartsNowIsInProgress) {
    EXPECT_EQ(next(makeBriefing({meeting(u"A"_s, 0s, 1h), meeting(u"B"_s, 1s, 1h)})), u"B"_s);
    EXPECT_EQ(next(makeBriefing({meeting(u"A"_s, 0s, 1h)})), u"A"_s);
}

TEST(MeetingInProgress, WithoutAnEndThereIsNone) {
    const auto open = openEnded(u"open"_s, -1min);
    const auto closed = meeting(u"closed"_s, -1min, 5h);
    EXPECT_EQ(next(makeBriefing({open, closed})), u"closed"_s);
    EXPECT_EQ(next(makeBriefing({open})), std::nullopt) << "which is over as it starts";
}

TEST(MeetingInProgress, OnlyWhatHasBegun) {
    const auto soon = makeBriefing({meeting(u"A"_s, 1s, 1h)});
    EXPECT_EQ(meetingInProgress(soon, now, backgroundThreshold), std::nullopt);
    const auto begun = makeBriefing({meeting(u"A"_s, 0s, 1h)});
    EXPECT_EQ(upcomingMeeting(begun, now, backgroundThreshold), std::nullopt);
}
