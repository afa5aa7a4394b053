#include "reminders/ReminderPlan.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr Instant now{1'731'700'800s};

BriefEvent startingIn(std::chrono::microseconds delay) {
    return makeEvent({.start = now + delay});
}

NotificationRequest
request(const BriefEvent& event, Instant moment, const LinkPolicy& links = LinkPolicy()) {
    return reminderRequest(event, moment, links);
}

QStringList remindedTitles(const std::vector<BriefEvent>& events, Instant moment = now) {
    QStringList titles;
    for (const BriefEvent& event : remindedEvents(makeBriefing(events), moment))
        titles += event.title;
    return titles;
}

struct Case {
    const char* name;
    std::chrono::microseconds startsIn;
    bool reminded;

    /// Without it the framework prints the bytes of the whole, gaps included.
    friend void PrintTo(const Case& shown, std::ostream* out) { *out << shown.name; }
};

class ReminderPlanTest : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(ReminderPlanTest, Qualifies) {
    EXPECT_EQ(!remindedTitles({startingIn(GetParam().startsIn)}).isEmpty(), GetParam().reminded);
}

INSTANTIATE_TEST_SUITE_P(
    All, ReminderPlanTest,
    testing::Values(
        Case{"Yesterday", -24h, false}, Case{"Running", -1s, false}, Case{"StartingNow", 0s, false},
        Case{"AlmostFiveMinutes", 299s, false}, Case{"ExactlyFiveMinutes", 300s, false},
        Case{"JustOverFiveMinutes", 300s + 1us, true}, Case{"ASecondOverFiveMinutes", 301s, true},
        Case{"AnHour", 1h, true}, Case{"ASecondUnderSixHours", 21599s, true},
        Case{"JustUnderSixHours", 6h - 1us, true}, Case{"ExactlySixHours", 6h, false},
        Case{"Tomorrow", 24h, false}),
    [](const auto& tested) { return tested.param.name; });

TEST(ReminderPlan, RemindsOfNoAllDayEventWhateverItsStart) {
    for (const auto& delay : {301s, 3600s, 21599s})
        EXPECT_TRUE(remindedTitles({makeEvent({.start = now + delay, .allDay = true})}).isEmpty());
}

TEST(ReminderPlan, RemindsOfNothingWithoutAStart) {
    EXPECT_TRUE(remindedTitles({makeEvent({.end = now + 1h})}).isEmpty());
}

TEST(ReminderPlan, RemindsOfNothingOnAnEmptyDay) {
    EXPECT_TRUE(remindedTitles({}).isEmpty());
}

TEST(ReminderPlan, LooksAtTodaysEventsOnly) {
    Briefing briefing = makeBriefing();
    briefing.nextEvent = startingIn(1h);
    EXPECT_TRUE(remindedEvents(briefing, now).empty());
}

TEST(ReminderPlan, RemindsOfLongBlocksToo) {
    EXPECT_EQ(
        remindedTitles({makeEvent({.start = now + 1h, .end = now + 9h})}),
        QStringList{u"Standup"_s});
}

TEST(ReminderPlan, KeepsTheProducersOrder) {
    EXPECT_EQ(
        remindedTitles(
            {makeEvent({.title = u"Late"_s, .start = now + 3h}),
             makeEvent({.title = u"Gone"_s, .start = now - 3h}),
             makeEvent({.title = u"Early"_s, .start = now + 1h}),
             makeEvent({.title = u"Middle"_s, .start = now + 2h})}),
        (QStringList{u"Late"_s, u"Early"_s, u"Middle"_s}));
}

TEST(ReminderPlan, OfTooManyMeetingsRemindsOfTheNearest) {
    std::vector<BriefEvent> events;
    QStringList nearest;
    for (int i = 0; i < 2000; ++i) {
        // The nearest stand at the end, the nearest of all last.
        const QString title = QString::number(i);
        events.push_back(makeEvent({.title = title, .start = now + 5h - i * 5s}));
        if (i >= 1950)
            nearest += title;
    }
    EXPECT_EQ(remindedTitles(events), nearest);
    EXPECT_EQ(nearest.size(), qsizetype(mostReminders));
}

TEST(ReminderPlan, OfTooManyMeetingsAtTheSameTimeRemindsOfTheFirst) {
    std::vector<BriefEvent> events;
    QStringList first;
    for (int i = 0; i < 2000; ++i) {
        const QString title = QString::number(i);
        events.push_back(makeEvent({.title = title, .start = now + 1h}));
        if (i < 49)
            first += title;
    }
    events.push_back(makeEvent({.title = u"before"_s, .start = now + 1h - 1us}));
    events.push_back(makeEvent({.title = u"after"_s, .start = now + 1h + 1us}));
    EXPECT_EQ(remindedTitles(events), first + QStringList{u"before"_s});
}

TEST(ReminderPlan, RemindsOfAsManyMeetingsAsFit) {
    std::vector<BriefEvent> events;
    for (std::size_t i = 0; i < mostReminders; ++i)
        events.push_back(startingIn(5h - i * 1min));
    EXPECT_EQ(remindedEvents(makeBriefing(events), now), events);
}

TEST(ReminderPlan, IdentifiesByTitleAndStart) {
    EXPECT_EQ(request(startingIn(0s), now - 1h).identifier, u"Standup|1731700800.0"_s);
    EXPECT_EQ(request(startingIn(250ms), now - 1h).identifier, u"Standup|1731700800.25"_s);
    EXPECT_EQ(
        request(makeEvent({.title = u"A|B"_s, .start = now}), now - 1h).identifier,
        u"A|B|1731700800.0"_s);
}

TEST(ReminderPlan, IdentifiesTheSameMeetingAlikeWhateverElseItHas) {
    const auto plain = makeEvent({.title = u"Standup"_s, .start = now + 1h});
    const auto full = makeEvent(
        {.title = u"Standup"_s,
         .start = now + 1h,
         .location = u"Room 4"_s,
         .meetingUrl = u"https://meet.example/a"_s});
    EXPECT_EQ(request(plain, now).identifier, request(full, now).identifier);
}

TEST(ReminderPlan, TakesTheTitleAsItStands) {
    const QString title = u" <b>Über & 会議</b>\n "_s;
    EXPECT_EQ(request(makeEvent({.title = title, .start = now + 1h}), now).title, title);
}

TEST(ReminderPlan, SaysWhereTheMeetingIs) {
    const auto body = [](const std::optional<QString>& location) {
        return request(makeEvent({.start = now + 1h, .location = location}), now).body;
    };
    EXPECT_EQ(body(std::nullopt), u"Starts in 5 min"_s);
    EXPECT_EQ(body(u""_s), u"Starts in 5 min"_s);
    EXPECT_EQ(body(u"Room 4"_s), u"Starts in 5 min · Room 4"_s);
}

TEST(ReminderPlan, CarriesTheLinkAsItStands) {
    const auto userInfo = [](const std::optional<QString>& url) {
        return request(makeEvent({.start = now + 1h, .meetingUrl = url}), now).userInfo;
    };
    const auto carried = [&userInfo](const QString& url) {
        return userInfo(url) == QVariantMap{{u"meetingUrl"_s, url}};
    };
    EXPECT_TRUE(userInfo(std::nullopt).isEmpty());
    EXPECT_TRUE(carried(u""_s));
    EXPECT_TRUE(carried(u"https://meet.example/a?b=c d"_s));
    EXPECT_TRUE(carried(u"file:///etc/passwd"_s));
}

TEST(ReminderPlan, OffersToJoinWhereALinkCanBeOpened) {
    const auto button = [](const std::optional<QString>& url, const QString& schemes = {}) {
        const auto event = makeEvent({.start = now + 1h, .meetingUrl = url});
        return request(event, now, LinkPolicy(schemes)).button;
    };
    EXPECT_EQ(button(u"https://meet.example/a"_s), u"Join"_s);
    EXPECT_EQ(button(u"zoommtg://join?confno=1"_s), u"Join"_s);
    for (const QString& useless : {u""_s, u"http://[nowhere"_s, u"file:///etc/passwd"_s})
        EXPECT_EQ(button(useless), std::nullopt) << useless.toStdString();
    EXPECT_EQ(button(std::nullopt), std::nullopt);
    EXPECT_EQ(button(u"slack://open"_s), std::nullopt);
    EXPECT_EQ(button(u"slack://open"_s, u"slack"_s), u"Join"_s);
}

TEST(ReminderPlan, FiresFiveMinutesAheadButNotWithinASecond) {
    const auto firesIn = [](std::chrono::microseconds startsIn) {
        return request(startingIn(startsIn), now).fireTime - now;
    };
    EXPECT_EQ(firesIn(1h), 55min);
    EXPECT_EQ(firesIn(302s), 2s);
    EXPECT_EQ(firesIn(301s), 1s);
    EXPECT_EQ(firesIn(300s + 1us), 1s);
    EXPECT_EQ(firesIn(299s), 1s); // it slipped into the past while the pass was under way
}

TEST(ReminderPlan, IsOfUseUntilTheMeetingBegins) {
    EXPECT_EQ(request(startingIn(1h), now).usefulUntil, now + 1h);
}

TEST(ReminderPlan, WithdrawsWhatIsNoLongerWantedInTheCentresOrder) {
    const std::vector<BriefEvent> wanted{startingIn(1h), startingIn(2h)};
    const QStringList pending{u"b|1.0"_s, startingIn(2h).id(), u"a|2.0"_s, u"foreign"_s};
    EXPECT_EQ(
        staleIdentifiers(pending, wanted), (QStringList{u"b|1.0"_s, u"a|2.0"_s, u"foreign"_s}));
    EXPECT_EQ(staleIdentifiers(pending, {}), pending);
    EXPECT_EQ(staleIdentifiers({startingIn(1h).id()}, wanted), QStringList());
    EXPECT_EQ(staleIdentifiers({}, wanted), QStringList());
}
