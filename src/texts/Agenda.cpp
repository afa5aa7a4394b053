#include "texts/Agenda.h"

#include "texts/JsonMembers.h"
#include "texts/PanelTexts.h"
#include "texts/StatusPresentation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace JsonMembers;

constexpr std::size_t longestSection = 1000;

QJsonObject json(const AgendaEvent& event) {
    return {
        {u"title"_s, event.title},
        {u"start"_s, orNull(isoText(event.start))},
        {u"end"_s, orNull(isoText(event.end))},
        {u"allDay"_s, event.allDay},
        {u"location"_s, orNull(event.location)},
        {u"canJoin"_s, event.canJoin},
    };
}

QJsonObject json(const Habit& habit) {
    return {
        {u"id"_s, habit.id},       {u"name"_s, habit.name},     {u"done"_s, habit.done},
        {u"count"_s, habit.count}, {u"target"_s, habit.target}, {u"streak"_s, habit.streak},
    };
}

QJsonObject json(const Chore& chore) {
    return {
        {u"id"_s, chore.id},
        {u"name"_s, chore.name},
        {u"room"_s, chore.room},
        {u"daysOverdue"_s, orNull(chore.daysOverdue)},
    };
}

template <typename Item>
QJsonArray jsonOfAll(const std::vector<Item>& items) {
    QJsonArray array;
    for (const Item& item : items)
        array += json(item);
    return array;
}

void read(const QJsonObject& object, AgendaEvent& event) {
    event = {
        .title = object.value(u"title"_s).toString(),
        .start = ifInstant(object.value(u"start"_s)),
        .end = ifInstant(object.value(u"end"_s)),
        .allDay = object.value(u"allDay"_s).toBool(),
        .location = ifText(object.value(u"location"_s)),
        .canJoin = object.value(u"canJoin"_s).toBool(),
    };
}

void read(const QJsonObject& object, Habit& habit) {
    habit = {
        .id = object.value(u"id"_s).toString(),
        .name = object.value(u"name"_s).toString(),
        .done = object.value(u"done"_s).toBool(),
        .count = object.value(u"count"_s).toInteger(),
        .target = object.value(u"target"_s).toInteger(),
        .streak = object.value(u"streak"_s).toInteger(),
    };
}

void read(const QJsonObject& object, Chore& chore) {
    const QJsonValue days = object.value(u"daysOverdue"_s);
    chore = {
        .id = object.value(u"id"_s).toString(),
        .name = object.value(u"name"_s).toString(),
        .room = object.value(u"room"_s).toString(),
        .daysOverdue = days.isDouble() ? std::optional(days.toInteger()) : std::nullopt,
    };
}

template <typename Item>
std::vector<Item> readAll(const QJsonValue& values) {
    std::vector<Item> items;
    for (const QJsonValue value : values.toArray())
        read(value.toObject(), items.emplace_back());
    return items;
}

template <typename Item>
void bound(std::vector<Item>& items) {
    if (items.size() > longestSection)
        items.erase(items.begin() + longestSection, items.end());
}

} // namespace

Agenda Agenda::of(const Briefing& briefing, Instant now, const LinkPolicy& links) {
    Agenda agenda{
        .date = briefing.date,
        .events = {},
        .habits = briefing.habits,
        .chores = briefing.chores,
        .focus = briefing.focus.productiveShare,
    };
    std::vector<BriefEvent> upcoming = PanelTexts::upcomingEvents(briefing, now);
    bound(upcoming);
    for (const BriefEvent& event : upcoming)
        agenda.events.push_back(
            {event.title, event.start, event.end, event.allDay, event.location,
             joinUrl(event, links).has_value()});
    bound(agenda.habits.items);
    bound(agenda.chores.top);
    return agenda;
}

QByteArray Agenda::toJson() const {
    return printable({
        {u"date"_s, date},
        {u"events"_s, jsonOfAll(events)},
        {u"habits"_s,
         QJsonObject{
             {u"done"_s, habits.done},
             {u"total"_s, habits.total},
             {u"items"_s, jsonOfAll(habits.items)}}},
        {u"chores"_s, QJsonObject{{u"count"_s, chores.count}, {u"items"_s, jsonOfAll(chores.top)}}},
        {u"focus"_s, orNull(focus)},
    });
}

std::optional<Agenda> Agenda::fromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject habits = document[u"habits"_s].toObject();
    const QJsonObject chores = document[u"chores"_s].toObject();
    const QJsonValue focus = document[u"focus"_s];
    Agenda agenda;
    agenda.date = document[u"date"_s].toString();
    agenda.events = readAll<AgendaEvent>(document[u"events"_s]);
    agenda.habits.done = habits.value(u"done"_s).toInteger();
    agenda.habits.total = habits.value(u"total"_s).toInteger();
    agenda.habits.items = readAll<Habit>(habits.value(u"items"_s));
    agenda.chores.count = chores.value(u"count"_s).toInteger();
    agenda.chores.top = readAll<Chore>(chores.value(u"items"_s));
    if (focus.isDouble())
        agenda.focus = focus.toDouble();
    return agenda;
}

} // namespace lumora
