#include "demo/DemoDay.h"

#include "demo/DemoInstant.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How many of the due chores are listed.
constexpr qsizetype kListedChores = 4;

/// A timed event; the times are minutes from the instant the day is laid out from.
struct Entry {
    int start;
    int end;
    QStringView title;
    QStringView feed;
    QStringView location = {};
    QStringView link = {};
};

constexpr Entry kBusy[] = {
    {-180, -150, u"Plan the day", u"Personal"},
    {-95, -65, u"Code review", u"Work", {}, u"https://meet.example.com/code-review"},
    {-90, 330, u"Focus block: quarterly report", u"Personal"},
    {-10, 35, u"Design review", u"Work", {}, u"https://meet.example.com/design-review"},
    {12, 27, u"Team sync", u"Work", u"Room 2.14", u"https://meet.example.com/team-sync"},
    {75, 105, u"Budget check-in", u"Work", {}, u"https://meet.example.com/budget"},
    {75, 120, u"Customer interview", u"Work", u"Studio",
     u"https://meet.example.com/interview?room=3"},
    {150, 180, u"One-to-one", u"Work"},
    {210, 270,
     // Every formatting would break this text anew.
     // clang-format off
     u"Roadmap 🗺️ 👩🏽‍💻👨‍👩‍👧 خطة الربع القادم · תכנון הרבעון הבא · all welcome",
     // clang-format on
     u"Work", u"Main hall", u"https://meet.example.com/roadmap"},
};

constexpr Entry kQuiet[] = {
    {-240, -210, u"Weekly kick-off", u"Work", u"Room 2.14", u"https://meet.example.com/kick-off"},
};

QJsonObject eventFrom(const Entry& entry, Instant dayFrom, const QTimeZone& zone) {
    const auto at = [&](int minutes) {
        return demoInstantText(dayFrom + std::chrono::minutes(minutes), zone);
    };
    QJsonObject event{
        {u"title"_s, entry.title.toString()},
        {u"start"_s, at(entry.start)},
        {u"end"_s, at(entry.end)},
        {u"allDay"_s, false},
        {u"feed"_s, entry.feed.toString()},
    };
    if (!entry.location.isEmpty())
        event[u"location"_s] = entry.location.toString();
    if (!entry.link.isEmpty())
        event[u"meetingUrl"_s] = entry.link.toString();
    return event;
}

QJsonObject allDayEvent(const QString& title, Instant dayFrom, const QTimeZone& zone) {
    const auto midnight = [&](qint64 daysOn) {
        const auto start = demoDate(dayFrom, zone).addDays(daysOn).startOfDay(zone);
        return demoInstantText(Instant(std::chrono::milliseconds(start.toMSecsSinceEpoch())), zone);
    };
    return {
        {u"title"_s, title}, {u"start"_s, midnight(0)}, {u"end"_s, midnight(1)},
        {u"allDay"_s, true}, {u"feed"_s, u"Team"_s},
    };
}

/// The producer's own idea of what comes next: the first event that has yet to start, or null.
QJsonValue nextEvent(const QJsonArray& events, Instant now, const QTimeZone& zone) {
    const auto next = std::ranges::find_if(events, [&](const QJsonValue& event) {
        const auto start = demoInstantFrom(event[u"start"_s].toString(), zone);
        return !event[u"allDay"_s].toBool() && start && *start > now;
    });
    return next == events.end() ? QJsonValue(QJsonValue::Null) : QJsonValue(*next);
}

QJsonObject choresJson(const QList<DemoChore>& chores) {
    QJsonArray top;
    for (const auto& chore : chores.first(std::min(kListedChores, chores.size()))) {
        QJsonObject item{{u"id"_s, chore.id}, {u"name"_s, chore.name}, {u"room"_s, chore.room}};
        if (chore.daysOverdue)
            item[u"daysOverdue"_s] = *chore.daysOverdue;
        top.append(item);
    }
    return {{u"count"_s, chores.size()}, {u"top"_s, top}};
}

QJsonObject habitsJson(const QList<DemoHabit>& habits) {
    QJsonArray items;
    for (const auto& habit : habits) {
        items.append(QJsonObject{
            {u"id"_s, habit.id},
            {u"name"_s, habit.name},
            {u"done"_s, habit.isDone()},
            {u"count"_s, habit.count},
            {u"target"_s, habit.target},
            {u"streak"_s, habit.streak},
        });
    }
    const auto done = std::ranges::count_if(habits, &DemoHabit::isDone);
    return {{u"done"_s, qint64(done)}, {u"total"_s, habits.size()}, {u"items"_s, items}};
}

QJsonObject spendingJson(const DemoSpending& spending) {
    QJsonArray top;
    for (const auto& bucket : spending.top) {
        top.append(QJsonObject{
            {u"bucket"_s, bucket.key},
            {u"label"_s, bucket.label},
            {u"icon"_s, bucket.icon},
            {u"color"_s, bucket.color},
            {u"amount"_s, bucket.amount},
        });
    }
    const double delta = spending.monthToDate / spending.sameDayLastMonth - 1.0;
    return {
        {u"mtd"_s, spending.monthToDate},
        {u"sameDayLastMonth"_s, spending.sameDayLastMonth},
        {u"deltaFraction"_s, std::round(delta * 1000.0) / 1000.0},
        {u"top"_s, top},
        {u"asOf"_s, spending.asOf},
        {u"generatedAt"_s, spending.generatedAt},
        {u"stale"_s, spending.stale},
    };
}

/// Cuts the start of one event down to its day, which is no instant.
void breakDate(QJsonArray& events) {
    constexpr qsizetype broken = 3;
    auto event = events[broken].toObject();
    event[u"start"_s] = event[u"start"_s].toString().section(u'T', 0, 0);
    events[broken] = event;
}

} // namespace

QJsonArray demoEvents(DemoScenario scenario, Instant dayFrom, const QTimeZone& zone) {
    if (scenario == DemoScenario::Empty)
        return {};
    const bool quiet = scenario == DemoScenario::Quiet;
    QJsonArray events{
        allDayEvent(quiet ? u"Day off for the team"_s : u"Release week"_s, dayFrom, zone)};
    for (const auto& entry : quiet ? std::span<const Entry>(kQuiet) : std::span<const Entry>(kBusy))
        events.append(eventFrom(entry, dayFrom, zone));
    return events;
}

QJsonObject demoBriefing(
    DemoScenario scenario, Instant dayFrom, Instant now, const DemoData& data,
    const QTimeZone& zone) {
    auto events = demoEvents(scenario, dayFrom, zone);
    QJsonObject briefing{
        {u"date"_s, demoDate(now, zone).toString(Qt::ISODate)},
        {u"nextEvent"_s, nextEvent(events, now, zone)},
        {u"chores"_s, choresJson(data.chores)},
        {u"habits"_s, habitsJson(data.habits)},
    };
    if (scenario == DemoScenario::Malformed)
        breakDate(events);
    briefing[u"eventsToday"_s] = events;
    QJsonObject focus;
    if (data.productiveShare)
        focus[u"productiveShare"_s] = *data.productiveShare;
    briefing[u"focus"_s] = focus;
    if (data.spending)
        briefing[u"spending"_s] = spendingJson(*data.spending);
    return briefing;
}

} // namespace lumora
