#include "companion/briefing/BriefingText.h"

#include "companion/parts/PartsJson.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr std::chrono::hours longestSilence{3};

QString timeText(std::chrono::sys_seconds time) {
    return QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), QTimeZone::utc())
        .toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
}

QJsonObject eventObject(const AgendaEvent& event) {
    const QString title = wholeText(event.title);
    QJsonObject object{
        {u"title"_s, title.isEmpty() ? u"(No title)"_s : title},
        {u"start"_s, timeText(event.start)},
        {u"end"_s, timeText(event.end)},
        {u"allDay"_s, event.allDay},
        {u"feed"_s, wholeText(event.calendar)}};
    if (event.location)
        object[u"location"_s] = wholeText(*event.location);
    if (event.meetingUrl)
        object[u"meetingUrl"_s] = QString::fromLatin1(event.meetingUrl->toEncoded());
    return object;
}

std::optional<QJsonObject> troubleObject(const Trouble& trouble, std::chrono::sys_seconds now) {
    if (now - trouble.since < longestSilence)
        return std::nullopt;
    const auto hours = std::chrono::floor<std::chrono::hours>(now - trouble.since).count();
    return QJsonObject{
        {u"title"_s, u"%1: no answer for %2 hours"_s.arg(wholeText(trouble.source)).arg(hours)},
        {u"allDay"_s, true}};
}

} // namespace

QByteArray briefingText(const BriefingParts& parts, std::chrono::sys_seconds now) {
    QJsonArray events;
    for (const Trouble& trouble : parts.troubles) {
        if (const auto object = troubleObject(trouble, now))
            events.append(*object);
    }
    for (const AgendaEvent& event : parts.events)
        events.append(eventObject(event));
    QJsonObject briefing{
        {u"date"_s, parts.date.toString(Qt::ISODate)},
        {u"generatedAt"_s, qint64(now.time_since_epoch().count())},
        {u"eventsToday"_s, events},
        {u"chores"_s, toJson(parts.chores)},
        {u"habits"_s, toJson(parts.habits)},
        {u"focus"_s, toJson(parts.focus)}};
    if (parts.spending)
        briefing[u"spending"_s] = toJson(*parts.spending);
    return QJsonDocument(briefing).toJson(QJsonDocument::Compact);
}

} // namespace lumora::companion
