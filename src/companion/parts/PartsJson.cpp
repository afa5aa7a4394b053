#include "companion/parts/PartsJson.h"

#include "companion/parts/JsonMembers.h"

#include <QJsonArray>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// Reads one object with `take`, which fills in the part from its members.
template <typename Part, typename Take>
tl::expected<Part, QString> readPart(QByteArrayView json, Take take) {
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (json.isEmpty())
        return tl::unexpected(u"There is nothing"_s);
    const auto error = parser.parse(json.data(), size_t(json.size())).get(root);
    if (error != simdjson::SUCCESS)
        return tl::unexpected(u"That is no JSON"_s);
    Part part;
    QString fault;
    take(JsonMembers(root, QString(), fault), part);
    if (!fault.isEmpty())
        return tl::unexpected(fault);
    return part;
}

HabitState habitFrom(JsonMembers members) {
    HabitState habit;
    habit.id = members.text("id");
    habit.name = members.text("name");
    habit.done = members.flag("done");
    habit.count = members.integer("count");
    habit.target = members.integer("target");
    habit.streak = members.integer("streak");
    return habit;
}

ChoreState choreFrom(JsonMembers members) {
    ChoreState chore;
    chore.id = members.text("id");
    chore.name = members.text("name");
    chore.room = members.text("room");
    chore.daysOverdue = members.optionalInteger("daysOverdue");
    return chore;
}

BucketPart bucketFrom(JsonMembers members) {
    BucketPart bucket;
    bucket.bucket = members.text("bucket");
    bucket.label = members.text("label");
    bucket.icon = members.text("icon");
    bucket.color = members.text("color");
    bucket.amount = members.number("amount");
    return bucket;
}

template <typename Items, typename ToObject>
QJsonArray arrayOf(const Items& items, ToObject toObject) {
    QJsonArray array;
    for (const auto& item : items)
        array.append(toObject(item));
    return array;
}

QJsonObject habitObject(const HabitState& habit) {
    return {{u"id"_s, wholeText(habit.id)}, {u"name"_s, wholeText(habit.name)},
            {u"done"_s, habit.done},        {u"count"_s, habit.count},
            {u"target"_s, habit.target},    {u"streak"_s, habit.streak}};
}

QJsonObject choreObject(const ChoreState& chore) {
    QJsonObject object{
        {u"id"_s, wholeText(chore.id)},
        {u"name"_s, wholeText(chore.name)},
        {u"room"_s, wholeText(chore.room)}};
    if (chore.daysOverdue)
        object[u"daysOverdue"_s] = *chore.daysOverdue;
    return object;
}

QJsonObject bucketObject(const BucketPart& bucket) {
    return {
        {u"bucket"_s, wholeText(bucket.bucket)},
        {u"label"_s, wholeText(bucket.label)},
        {u"icon"_s, wholeText(bucket.icon)},
        {u"color"_s, wholeText(bucket.color)},
        {u"amount"_s, bucket.amount}};
}

} // namespace

tl::expected<HabitsPart, QString> readHabits(QByteArrayView json) {
    return readPart<HabitsPart>(json, [](JsonMembers members, HabitsPart& part) {
        part.done = members.integer("done");
        part.total = members.integer("total");
        members.each(
            "items", [&](JsonMembers item) { part.items.push_back(habitFrom(std::move(item))); });
    });
}

tl::expected<ChoresPart, QString> readChores(QByteArrayView json) {
    return readPart<ChoresPart>(json, [](JsonMembers members, ChoresPart& part) {
        part.count = members.integer("count");
        members.each(
            "top", [&](JsonMembers item) { part.top.push_back(choreFrom(std::move(item))); });
    });
}

tl::expected<FocusPart, QString> readFocus(QByteArrayView json) {
    return readPart<FocusPart>(json, [](JsonMembers members, FocusPart& part) {
        part.productiveShare = members.optionalNumber("productiveShare");
    });
}

tl::expected<SpendingPart, QString> readSpending(QByteArrayView json) {
    return readPart<SpendingPart>(json, [](JsonMembers members, SpendingPart& part) {
        part.mtd = members.number("mtd");
        part.sameDayLastMonth = members.number("sameDayLastMonth");
        part.deltaFraction = members.optionalNumber("deltaFraction");
        members.each(
            "top", [&](JsonMembers item) { part.top.push_back(bucketFrom(std::move(item))); });
        part.asOf = members.text("asOf");
        part.generatedAt = members.number("generatedAt");
        part.stale = members.flag("stale");
    });
}

QJsonObject toJson(const HabitsPart& habits) {
    return {
        {u"done"_s, habits.done},
        {u"total"_s, habits.total},
        {u"items"_s, arrayOf(habits.items, habitObject)}};
}

QJsonObject toJson(const ChoresPart& chores) {
    return {{u"count"_s, chores.count}, {u"top"_s, arrayOf(chores.top, choreObject)}};
}

QJsonObject toJson(const FocusPart& focus) {
    QJsonObject object;
    if (focus.productiveShare)
        object[u"productiveShare"_s] = *focus.productiveShare;
    return object;
}

QJsonObject toJson(const SpendingPart& spending) {
    QJsonObject object{
        {u"mtd"_s, spending.mtd},
        {u"sameDayLastMonth"_s, spending.sameDayLastMonth},
        {u"top"_s, arrayOf(spending.top, bucketObject)},
        {u"asOf"_s, wholeText(spending.asOf)},
        {u"generatedAt"_s, spending.generatedAt},
        {u"stale"_s, spending.stale}};
    if (spending.deltaFraction)
        object[u"deltaFraction"_s] = *spending.deltaFraction;
    return object;
}

QString wholeText(const QString& text) {
    return QString::fromUtf8(text.toUtf8());
}

} // namespace lumora::companion
