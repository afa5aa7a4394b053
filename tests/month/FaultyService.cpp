#include "month/FaultyService.h"

#include "briefing/Instant.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora::tests {

namespace {

HttpOutcome broken(TransportError::Kind kind, const QString& description) {
    return tl::unexpected(TransportError{kind, description});
}

HttpOutcome failed(const QString& description) {
    return broken(TransportError::Kind::Failed, description);
}

HttpOutcome answered(int status, const QByteArray& body = {}) {
    return HttpResponse{status, body};
}

QJsonObject meeting(const QDateTime& start) {
    return {
        {u"title"_s, u"Meeting at "_s + start.toString(u"HH:mm"_s)},
        {u"start"_s, start.toString(Qt::ISODate)},
        {u"end"_s, start.addSecs(1800).toString(Qt::ISODate)},
        {u"allDay"_s, false},
        {u"meetingUrl"_s, u"https://meet.example.com/j/1"_s},
    };
}

} // namespace

FaultyService::FaultyService(Clock& clock, std::mt19937& random)
    : m_clock(clock)
    , m_random(random) {}

QCoro::Task<HttpOutcome> FaultyService::exchange(HttpRequest request) {
    const Ending ending = m_well ? goodAnswer(request) : draw(request);
    m_kindsSeen.insert(ending.kind);
    const QPointer<FaultyService> self(this);
    co_await m_clock.wait(ending.after);
    if (self) {
        ++m_exchangeCount;
        if (ending.number)
            m_came.push_back(*ending.number);
    }
    co_return ending.outcome;
}

std::optional<std::size_t> FaultyService::cameAs(double number) const {
    const auto found = std::ranges::find(m_came, number);
    if (found == m_came.end())
        return std::nullopt;
    return std::size_t(found - m_came.begin());
}

FaultyService::Ending FaultyService::draw(const HttpRequest& request) {
    const std::vector<Ending> faults{
        {u"refused"_s, 0ms, failed(u"Connection refused"_s)},
        {u"unknown host"_s, 50ms, failed(u"Host day.example not found"_s)},
        {u"reset"_s, 100ms, failed(u"Connection closed"_s)},
        {u"silence"_s, 15s, failed(u"The request timed out"_s)},
        {u"drip"_s, 30s, failed(u"The request timed out"_s)},
        {u"TLS"_s, 200ms, failed(u"SSL handshake failed: certificate has expired"_s)},
        {u"no HTTP"_s, 100ms, broken(TransportError::Kind::NotHttp, u"The answer is no HTTP"_s)},
        {u"too large"_s, 2s, broken(TransportError::Kind::BodyTooLarge, u"Too large"_s)},
        {u"401"_s, 100ms, answered(401)},
        {u"404"_s, 100ms, answered(404, "<html>")},
        {u"409"_s, 100ms, answered(409, R"({"error":"Not now"})")},
        {u"422"_s, 100ms, answered(422, R"({"error":""})")},
        {u"429"_s, 100ms, answered(429)},
        {u"302"_s, 100ms, answered(302)},
        {u"500"_s, 100ms, answered(500)},
        {u"503"_s, 5s, answered(503)},
        {u"empty"_s, 100ms, answered(200)},
        {u"HTML"_s, 100ms, answered(200, "<!doctype html><title>Log in</title>")},
        {u"half a document"_s, 100ms, answered(200, briefing(0).chopped(40))},
        {u"deep"_s, 100ms, answered(200, QByteArray(5000, '['))},
    };
    // Most of the time all is well.
    if (std::uniform_int_distribution(1, 3)(m_random) > 1)
        return goodAnswer(request);
    return faults[std::uniform_int_distribution<std::size_t>(0, faults.size() - 1)(m_random)];
}

FaultyService::Ending FaultyService::goodAnswer(const HttpRequest& request) {
    const std::chrono::milliseconds after(std::uniform_int_distribution(20, 3000)(m_random));
    if (request.method == "POST")
        return {u"done"_s, after, answered(200, R"({"ok":true,"queued":true})")};
    const double number = ++m_lastNumber;
    return {u"briefing"_s, after, answered(200, briefing(number)), number};
}

QByteArray FaultyService::briefing(double number) const {
    const QDateTime now = toDateTime(m_clock.now()).toUTC();
    QJsonArray events;
    for (int hour = 8; hour <= 18; hour += 2)
        events.append(meeting(QDateTime(now.date(), QTime(hour, 0), kUtc)));
    const QJsonObject document{
        {u"date"_s, now.date().toString(Qt::ISODate)},
        {u"generatedAt"_s, number},
        {u"eventsToday"_s, events},
        {u"chores"_s, QJsonObject{{u"count"_s, 0}, {u"top"_s, QJsonArray()}}},
        {u"habits"_s, QJsonObject{{u"done"_s, 1}, {u"total"_s, 2}, {u"items"_s, QJsonArray()}}},
        {u"focus"_s, QJsonObject()},
        {u"spending"_s,
         QJsonObject{
             {u"mtd"_s, 12.5},
             {u"sameDayLastMonth"_s, 10},
             {u"top"_s, QJsonArray()},
             {u"asOf"_s, now.date().toString(Qt::ISODate)},
             {u"generatedAt"_s, number},
             {u"stale"_s, false},
         }},
    };
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

} // namespace lumora::tests
