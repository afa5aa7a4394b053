#include "BriefingJson.h"

#include "InstantText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

// Those that may be absent.
QJsonValue jsonValue(const BriefEvent& event);
QJsonValue jsonValue(const Spending& spending);

QJsonValue jsonValue(const QString& text) {
    return text;
}

QJsonValue jsonValue(double number) {
    return number;
}

QJsonValue jsonValue(qint64 number) {
    return number;
}

QJsonValue jsonValue(Instant instant) {
    return QString::fromStdString(instantText(instant) + "Z");
}

/// Absent values are null, which means the same as leaving them out.
template <typename Value>
QJsonValue jsonValue(const std::optional<Value>& value) {
    return value ? jsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonValue jsonValue(const BriefEvent& event) {
    return QJsonObject{
        {u"title"_s, event.title},
        {u"start"_s, jsonValue(event.start)},
        {u"end"_s, jsonValue(event.end)},
        {u"allDay"_s, event.allDay},
        {u"location"_s, jsonValue(event.location)},
        {u"feed"_s, jsonValue(event.feed)},
        {u"meetingUrl"_s, jsonValue(event.meetingUrl)},
    };
}

QJsonValue jsonValue(const Chore& chore) {
    return QJsonObject{
        {u"id"_s, chore.id},
        {u"name"_s, chore.name},
        {u"room"_s, chore.room},
        {u"daysOverdue"_s, jsonValue(chore.daysOverdue)},
    };
}

QJsonValue jsonValue(const Habit& habit) {
    return QJsonObject{
        {u"id"_s, habit.id},       {u"name"_s, habit.name},     {u"done"_s, habit.done},
        {u"count"_s, habit.count}, {u"target"_s, habit.target}, {u"streak"_s, habit.streak},
    };
}

QJsonValue jsonValue(const Bucket& bucket) {
    return QJsonObject{
        {u"bucket"_s, bucket.bucket}, {u"label"_s, bucket.label},   {u"icon"_s, bucket.icon},
        {u"color"_s, bucket.color},   {u"amount"_s, bucket.amount},
    };
}

template <typename Item>
QJsonArray jsonArray(const std::vector<Item>& items) {
    QJsonArray array;
    for (const Item& item : items)
        array += jsonValue(item);
    return array;
}

QJsonValue jsonValue(const Spending& spending) {
    return QJsonObject{
        {u"mtd"_s, spending.mtd},
        {u"sameDayLastMonth"_s, spending.sameDayLastMonth},
        {u"deltaFraction"_s, jsonValue(spending.deltaFraction)},
        {u"top"_s, jsonArray(spending.top)},
        {u"asOf"_s, spending.asOf},
        {u"generatedAt"_s, spending.generatedAt},
        {u"stale"_s, spending.stale},
    };
}

bool canBeWritten(const BriefEvent& event) {
    const auto isOrdinary = [](const std::optional<Instant>& instant) {
        return !instant || hasOrdinaryYear(*instant);
    };
    return isOrdinary(event.start) && isOrdinary(event.end);
}

} // namespace

std::optional<QByteArray> jsonOf(const Briefing& briefing) {
    if (!std::ranges::all_of(briefing.eventsToday, canBeWritten) ||
        (briefing.nextEvent && !canBeWritten(*briefing.nextEvent)))
        return std::nullopt;
    const QJsonObject chores{
        {u"count"_s, briefing.chores.count},
        {u"top"_s, jsonArray(briefing.chores.top)},
    };
    const QJsonObject habits{
        {u"done"_s, briefing.habits.done},
        {u"total"_s, briefing.habits.total},
        {u"items"_s, jsonArray(briefing.habits.items)},
    };
    const QJsonObject object{
        {u"date"_s, briefing.date},
        {u"generatedAt"_s, briefing.generatedAt},
        {u"nextEvent"_s, jsonValue(briefing.nextEvent)},
        {u"eventsToday"_s, jsonArray(briefing.eventsToday)},
        {u"chores"_s, chores},
        {u"habits"_s, habits},
        {u"focus"_s,
         QJsonObject{{u"productiveShare"_s, jsonValue(briefing.focus.productiveShare)}}},
        {u"spending"_s, jsonValue(briefing.spending)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace lumora::fuzz
