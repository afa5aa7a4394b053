#include "demo/DemoDay.h"

#include "demo/DemoInstant.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const QTimeZone kBerlin("Europe/Berlin");
const Instant kMidnightUtc = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4);
const Instant kDayNoon = kMidnightUtc + 12h;

QJsonObject briefing(
    DemoScenario scenario, Instant dayFrom = kDayNoon, std::optional<Instant> now = std::nullopt,
    const QTimeZone& zone = kBerlin) {
    return demoBriefing(
        scenario, dayFrom, now.value_or(dayFrom), initialDemoData(scenario, dayFrom, zone), zone);
}

QJsonArray eventsOf(const QJsonObject& document) {
    return document[u"eventsToday"_s].toArray();
}

Instant startOf(const QJsonValue& event) {
    return demoInstantFrom(event[u"start"_s].toString(), kBerlin).value();
}

Instant endOf(const QJsonValue& event) {
    return demoInstantFrom(event[u"end"_s].toString(), kBerlin).value();
}

bool isAllDay(const QJsonValue& event) {
    return event[u"allDay"_s].toBool();
}

/// The timed events shorter than six hours, as a label would consider them.
QList<QJsonObject> meetingsOf(const QJsonObject& document) {
    QList<QJsonObject> meetings;
    for (const auto& event : eventsOf(document)) {
        if (!isAllDay(event) && endOf(event) - startOf(event) < 6h)
            meetings.append(event.toObject());
    }
    return meetings;
}

QList<QJsonObject> inProgress(const QJsonObject& document, Instant now) {
    auto meetings = meetingsOf(document);
    meetings.removeIf([&](const auto& m) { return startOf(m) > now || endOf(m) <= now; });
    return meetings;
}

QList<QJsonObject> startingWithinHalfAnHour(const QJsonObject& document, Instant now) {
    auto meetings = meetingsOf(document);
    meetings.removeIf([&](const auto& m) { return startOf(m) <= now || startOf(m) > now + 30min; });
    return meetings;
}

bool isDay(const QJsonValue& date) {
    return QDate::fromString(date.toString(), Qt::ISODate).isValid();
}

} // namespace

TEST(DemoDay, TheBusyDayHasAMeetingInTwelveMinutes) {
    const auto next = startingWithinHalfAnHour(briefing(DemoScenario::Busy), kDayNoon);
    ASSERT_EQ(next.size(), 1);
    EXPECT_EQ(startOf(next[0]), kDayNoon + 12min);
    EXPECT_TRUE(next[0].contains(u"meetingUrl"_s));
    EXPECT_TRUE(next[0].contains(u"location"_s));
}

TEST(DemoDay, TheBusyDayHasAMeetingInProgress) {
    const auto running = inProgress(briefing(DemoScenario::Busy), kDayNoon);
    ASSERT_EQ(running.size(), 1);
    EXPECT_EQ(startOf(running[0]), kDayNoon - 10min);
    EXPECT_EQ(endOf(running[0]), kDayNoon + 35min);
    EXPECT_TRUE(running[0].contains(u"meetingUrl"_s));
}

TEST(DemoDay, TwentyMinutesOnTheNextMeetingIsTheOneInProgressThatEndsFirst) {
    const auto document = briefing(DemoScenario::Busy);
    const auto later = kDayNoon + 20min;
    EXPECT_TRUE(startingWithinHalfAnHour(document, later).isEmpty());
    auto running = inProgress(document, later);
    ASSERT_EQ(running.size(), 2);
    const auto first = *std::ranges::min_element(running, {}, endOf);
    EXPECT_EQ(startOf(first), kDayNoon + 12min);
}

TEST(DemoDay, TheBusyDayHasEveryOddKindOfEvent) {
    const auto events = eventsOf(briefing(DemoScenario::Busy));
    const auto count = [&](auto predicate) { return std::ranges::count_if(events, predicate); };
    EXPECT_EQ(count(isAllDay), 1);
    EXPECT_EQ(count([](const auto& e) { return !isAllDay(e) && endOf(e) - startOf(e) == 7h; }), 1);
    EXPECT_GE(count([](const auto& e) { return endOf(e) <= kDayNoon; }), 1);
    EXPECT_GE(
        count([](const auto& e) {
            return startOf(e) > kDayNoon + 45min && !e[u"meetingUrl"_s].isString() &&
                   !e[u"location"_s].isString();
        }),
        1);
    std::multiset<Instant> starts;
    for (const auto& meeting : meetingsOf(briefing(DemoScenario::Busy)))
        starts.insert(startOf(meeting));
    EXPECT_TRUE(std::ranges::any_of(starts, [&](Instant start) {
        return start > kDayNoon + 45min && starts.count(start) == 2;
    }));
}

TEST(DemoDay, ALongTitleMixesScriptsAndJoinedEmoji) {
    const auto events = eventsOf(briefing(DemoScenario::Busy));
    EXPECT_TRUE(std::ranges::any_of(events, [](const QJsonValue& event) {
        const auto title = event[u"title"_s].toString();
        const bool rightToLeft = std::ranges::any_of(title, [](QChar c) {
            return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
        });
        const bool joined = title.contains(u'\u200d') && title.contains(u"\U0001F3FD"_s);
        return title.size() > 50 && rightToLeft && joined;
    }));
}

TEST(DemoDay, LinksLeadNowhereReal) {
    for (const auto& event : eventsOf(briefing(DemoScenario::Busy))) {
        const auto link = event[u"meetingUrl"_s].toString();
        EXPECT_TRUE(link.isEmpty() || link.startsWith(u"https://meet.example.com/"));
    }
}

TEST(DemoDay, EventsAreInOrderAndOnWholeMinutes) {
    const auto events = eventsOf(briefing(DemoScenario::Busy));
    EXPECT_TRUE(isAllDay(events[0]));
    Instant previous = Instant::min();
    for (const auto& event : events) {
        EXPECT_EQ(startOf(event), std::chrono::floor<std::chrono::minutes>(startOf(event)));
        EXPECT_LT(startOf(event), endOf(event));
        if (!isAllDay(event)) {
            EXPECT_LE(previous, startOf(event));
            previous = startOf(event);
        }
    }
}

TEST(DemoDay, EventsAreLaidOutToTheSecond) {
    const auto next = meetingsOf(briefing(DemoScenario::Busy, kDayNoon + 17s));
    EXPECT_TRUE(std::ranges::any_of(
        next, [](const auto& m) { return startOf(m) == kDayNoon + 12min + 17s; }));
}

TEST(DemoDay, TimePassingLeavesTheEventsInPlace) {
    const auto atNoon = briefing(DemoScenario::Busy, kDayNoon);
    const auto later = briefing(DemoScenario::Busy, kDayNoon, kDayNoon + 3h);
    EXPECT_EQ(eventsOf(atNoon), eventsOf(later));
    EXPECT_NE(atNoon[u"nextEvent"_s], later[u"nextEvent"_s]);
}

TEST(DemoDay, TheNextEventIsTheFirstThatHasYetToStart) {
    const QJsonValue atNoon = briefing(DemoScenario::Busy)[u"nextEvent"_s];
    EXPECT_EQ(startOf(atNoon), kDayNoon + 12min);
    EXPECT_TRUE(eventsOf(briefing(DemoScenario::Busy)).contains(atNoon));
    EXPECT_TRUE(briefing(DemoScenario::Busy, kDayNoon, kDayNoon + 12h)[u"nextEvent"_s].isNull());
    EXPECT_TRUE(briefing(DemoScenario::Empty)[u"nextEvent"_s].isNull());
}

TEST(DemoDay, TheBusyDaysHabitsAreDoneInPart) {
    const auto habits = briefing(DemoScenario::Busy)[u"habits"_s].toObject();
    const auto items = habits[u"items"_s].toArray();
    EXPECT_EQ(habits[u"total"_s].toInteger(), items.size());
    EXPECT_EQ(habits[u"done"_s].toInteger(), 1);
    EXPECT_GT(items.size(), 1);
    const auto has = [&](auto predicate) { return std::ranges::any_of(items, predicate); };
    EXPECT_TRUE(has([](const auto& h) {
        return h[u"count"_s].toInteger() == 2 && h[u"target"_s].toInteger() == 8;
    }));
    EXPECT_TRUE(has([](const auto& h) { return h[u"streak"_s].toInteger() == 0; }));
    EXPECT_TRUE(has([](const auto& h) { return h[u"streak"_s].toInteger() > 0; }));
}

TEST(DemoDay, TheBusyDaysChoresAreOfEveryUrgencyAndNotAllListed) {
    const auto chores = briefing(DemoScenario::Busy)[u"chores"_s].toObject();
    const auto top = chores[u"top"_s].toArray();
    EXPECT_GT(chores[u"count"_s].toInteger(), top.size());
    const auto has = [&](auto predicate) { return std::ranges::any_of(top, predicate); };
    EXPECT_TRUE(has([](const auto& c) { return c[u"daysOverdue"_s].toInteger() > 1; }));
    EXPECT_TRUE(has([](const auto& c) { return c[u"daysOverdue"_s].toInteger(-1) == 0; }));
    EXPECT_TRUE(has([](const auto& c) { return c[u"daysOverdue"_s].isUndefined(); }));
}

TEST(DemoDay, TheBusyDaysSpendingIsStaleAndAddsUp) {
    const auto document = briefing(DemoScenario::Busy);
    EXPECT_EQ(document[u"focus"_s][u"productiveShare"_s].toDouble(), 0.42);
    const auto spending = document[u"spending"_s].toObject();
    EXPECT_EQ(spending[u"deltaFraction"_s].toDouble(), 0.187);
    EXPECT_TRUE(spending[u"stale"_s].toBool());
    EXPECT_EQ(spending[u"asOf"_s].toString(), u"2025-03-03"_s);
    const auto top = spending[u"top"_s].toArray();
    ASSERT_EQ(top.size(), 6);
    double sum = 0;
    std::set<QString> keys;
    const QRegularExpression colour(u"^#[0-9A-F]{6}$"_s);
    for (const auto& bucket : top) {
        sum += bucket[u"amount"_s].toDouble();
        keys.insert(bucket[u"bucket"_s].toString());
        EXPECT_TRUE(colour.match(bucket[u"color"_s].toString()).hasMatch());
        EXPECT_FALSE(bucket[u"icon"_s].toString().isEmpty());
    }
    EXPECT_EQ(keys.size(), 6);
    EXPECT_LE(sum, spending[u"mtd"_s].toDouble());
}

TEST(DemoDay, TheEmptyDayIsEmpty) {
    const auto document = briefing(DemoScenario::Empty);
    EXPECT_TRUE(eventsOf(document).isEmpty());
    EXPECT_EQ(document[u"habits"_s][u"total"_s].toInteger(-1), 0);
    EXPECT_EQ(document[u"chores"_s][u"count"_s].toInteger(-1), 0);
    EXPECT_TRUE(document[u"focus"_s].isObject());
    EXPECT_TRUE(document[u"focus"_s].toObject().isEmpty());
    EXPECT_FALSE(document.contains(u"spending"_s));
}

TEST(DemoDay, TheQuietDayHasNothingNearAndEverythingDone) {
    const auto document = briefing(DemoScenario::Quiet);
    EXPECT_GE(eventsOf(document).size(), 2);
    for (const auto& meeting : meetingsOf(document))
        EXPECT_LE(endOf(meeting), kDayNoon);
    const auto habits = document[u"habits"_s].toObject();
    EXPECT_GT(habits[u"total"_s].toInteger(), 0);
    EXPECT_EQ(habits[u"done"_s], habits[u"total"_s]);
    EXPECT_EQ(document[u"chores"_s][u"count"_s].toInteger(-1), 0);
    EXPECT_LT(document[u"spending"_s][u"deltaFraction"_s].toDouble(), 0);
    EXPECT_FALSE(document[u"spending"_s][u"stale"_s].toBool());
}

TEST(DemoDay, TheMalformedDayHasOneDateWithoutATime) {
    const auto good = eventsOf(briefing(DemoScenario::Busy));
    auto bad = eventsOf(briefing(DemoScenario::Malformed));
    ASSERT_EQ(good.size(), bad.size());
    EXPECT_EQ(bad[3][u"start"_s].toString(), good[3][u"start"_s].toString().left(10));
    bad[3] = good[3];
    EXPECT_EQ(good, bad);
}

TEST(DemoDay, TheDayIsLocal) {
    const auto lateUtc = kMidnightUtc + 23h + 30min;
    EXPECT_EQ(briefing(DemoScenario::Busy, lateUtc)[u"date"_s].toString(), u"2025-03-05"_s);
    const QJsonValue allDay = eventsOf(briefing(DemoScenario::Busy, lateUtc))[0];
    EXPECT_EQ(allDay[u"start"_s].toString(), u"2025-03-05T00:00:00+01:00"_s);
    EXPECT_EQ(allDay[u"end"_s].toString(), u"2025-03-06T00:00:00+01:00"_s);
}

TEST(DemoDay, AnAllDayEntryFollowsTheZonesOwnMidnights) {
    const QTimeZone santiago("America/Santiago"); // its clocks change at midnight
    const auto change = std::chrono::sys_days(std::chrono::year(2025) / 9 / 7) + 15h;
    const QJsonValue day = eventsOf(briefing(DemoScenario::Busy, change, change, santiago))[0];
    EXPECT_EQ(day[u"start"_s].toString(), u"2025-09-07T01:00:00-03:00"_s);
    EXPECT_EQ(day[u"end"_s].toString(), u"2025-09-08T00:00:00-03:00"_s);
}

TEST(DemoDay, EveryHourOfTheYearsEdgesIsAsGood) {
    for (const auto& zone : {kBerlin, QTimeZone("Asia/Kolkata"), QTimeZone("America/St_Johns")}) {
        for (const auto day :
             {std::chrono::year(2025) / 3 / 30, std::chrono::year(2025) / 10 / 26,
              std::chrono::year(2024) / 2 / 29, std::chrono::year(2025) / 12 / 31}) {
            for (auto hour = 0h; hour < 24h; ++hour) {
                const Instant at = std::chrono::sys_days(day) + hour + 59min + 59s;
                const auto document = briefing(DemoScenario::Busy, at, at, zone);
                EXPECT_TRUE(isDay(document[u"date"_s]));
                EXPECT_EQ(inProgress(document, at + 1s).size(), 1);
                EXPECT_EQ(startingWithinHalfAnHour(document, at + 1s).size(), 1);
            }
        }
    }
}
