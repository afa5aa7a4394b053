#include "support/BriefingFields.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

struct Member {
    QString key;
    Kind kind;
    bool required;
    std::vector<Member> members; ///< of the object, or of the list's items
};

std::vector<Member> eventMembers() {
    return {
        {u"title"_s, Kind::Text, true, {}},       {u"start"_s, Kind::Date, false, {}},
        {u"end"_s, Kind::Date, false, {}},        {u"allDay"_s, Kind::Boolean, true, {}},
        {u"location"_s, Kind::Text, false, {}},   {u"feed"_s, Kind::Text, false, {}},
        {u"meetingUrl"_s, Kind::Text, false, {}},
    };
}

std::vector<Member> choreMembers() {
    return {
        {u"id"_s, Kind::Text, true, {}},
        {u"name"_s, Kind::Text, true, {}},
        {u"room"_s, Kind::Text, true, {}},
        {u"daysOverdue"_s, Kind::Integer, false, {}},
    };
}

std::vector<Member> habitMembers() {
    return {
        {u"id"_s, Kind::Text, true, {}},        {u"name"_s, Kind::Text, true, {}},
        {u"done"_s, Kind::Boolean, true, {}},   {u"count"_s, Kind::Integer, true, {}},
        {u"target"_s, Kind::Integer, true, {}}, {u"streak"_s, Kind::Integer, true, {}},
    };
}

std::vector<Member> bucketMembers() {
    return {
        {u"bucket"_s, Kind::Text, true, {}},   {u"label"_s, Kind::Text, true, {}},
        {u"icon"_s, Kind::Text, true, {}},     {u"color"_s, Kind::Text, true, {}},
        {u"amount"_s, Kind::Number, true, {}},
    };
}

std::vector<Member> spendingMembers() {
    return {
        {u"mtd"_s, Kind::Number, true, {}},
        {u"sameDayLastMonth"_s, Kind::Number, true, {}},
        {u"deltaFraction"_s, Kind::Number, false, {}},
        {u"top"_s, Kind::List, true, bucketMembers()},
        {u"asOf"_s, Kind::Text, true, {}},
        {u"generatedAt"_s, Kind::Number, true, {}},
        {u"stale"_s, Kind::Boolean, true, {}},
    };
}

std::vector<Member> briefingMembers() {
    const auto chores = std::vector<Member>{
        {u"count"_s, Kind::Integer, true, {}}, {u"top"_s, Kind::List, true, choreMembers()}};
    const auto habits = std::vector<Member>{
        {u"done"_s, Kind::Integer, true, {}},
        {u"total"_s, Kind::Integer, true, {}},
        {u"items"_s, Kind::List, true, habitMembers()}};
    const auto focus = std::vector<Member>{{u"productiveShare"_s, Kind::Number, false, {}}};
    return {
        {u"date"_s, Kind::Text, true, {}},
        {u"generatedAt"_s, Kind::Number, true, {}},
        {u"nextEvent"_s, Kind::Object, false, eventMembers()},
        {u"eventsToday"_s, Kind::List, true, eventMembers()},
        {u"chores"_s, Kind::Object, true, chores},
        {u"habits"_s, Kind::Object, true, habits},
        {u"focus"_s, Kind::Object, true, focus},
        {u"spending"_s, Kind::Object, false, spendingMembers()},
    };
}

/// Appends the fields of `members`, which are found at `parent`.
void walk(const std::vector<Member>& members, const Path& parent, std::vector<Field>& fields) {
    for (const Member& member : members) {
        Path path = parent;
        path.emplace_back(member.key);
        fields.push_back({path, member.kind, member.required});
        if (member.kind == Kind::List) {
            path.emplace_back(1);
            fields.push_back({path, Kind::Object, true});
        }
        walk(member.members, path, fields);
    }
}

} // namespace

std::vector<Field> allFields() {
    std::vector<Field> fields;
    walk(briefingMembers(), {}, fields);
    return fields;
}

QJsonValue with(
    const QJsonValue& root, std::span<const Path::value_type> path, const QJsonValue& replacement) {
    if (path.empty())
        return replacement;
    if (const int* index = std::get_if<int>(&path[0])) {
        QJsonArray array = root.toArray();
        array[*index] = with(array[*index], path.subspan(1), replacement);
        return array;
    }
    QJsonObject object = root.toObject();
    const QString key = std::get<QString>(path[0]);
    object[key] = with(object[key], path.subspan(1), replacement);
    return object;
}

QString toText(const Path& path) {
    QString text;
    for (const auto& step : path) {
        if (const int* index = std::get_if<int>(&step))
            text += u"[%1]"_s.arg(*index);
        else
            text += (text.isEmpty() ? u""_s : u"."_s) + std::get<QString>(step);
    }
    return text;
}

} // namespace lumora::tests
