#include "companion/calendars/AddressSource.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr int notModified = 304;

// Half as long as the time that it has failed for, more or less.
std::chrono::minutes untilNext(int failures, std::chrono::minutes refresh) {
    if (failures == 0)
        return refresh;
    return std::min(refresh, std::chrono::minutes(1 << std::min(failures - 1, 10)));
}

} // namespace

AddressSource::AddressSource(AddressReading reading, Web& web, Now now)
    : CalendarSource(std::move(now))
    , m_reading(std::move(reading))
    , m_web(web) {
    if (const auto kept = readKeptBody(m_reading.keptPath)) {
        if (auto events = readCalendar(kept->body, m_reading.reader)) {
            m_kept = *kept;
            m_kept.body.clear(); // what was made of it is enough
            takeOld({{.name = m_reading.name, .events = std::move(*events)}}, kept->fetchedAt);
        }
    }
}

void AddressSource::refreshDue() {
    if (m_isAsking)
        return;
    // A clock that was put back does not silence a calendar.
    const auto since = m_askedAt ? now() - *m_askedAt : std::chrono::seconds::max();
    if (since >= std::chrono::seconds(0) && since < untilNext(m_failures, m_reading.refresh))
        return;
    m_askedAt = now();
    if (!fetchableUrl(m_reading.url))
        return goOnFailing(u"Only https addresses are fetched"_s);

    WebRequest request;
    request.url = m_reading.url;
    request.largest = longestCalendarText;
    request.headers = {{"Accept", "text/calendar, text/plain;q=0.5, */*;q=0.1"}};
    if (!m_kept.etag.isEmpty())
        request.headers.push_back({"If-None-Match", m_kept.etag});
    if (!m_kept.lastModified.isEmpty())
        request.headers.push_back({"If-Modified-Since", m_kept.lastModified});
    m_isAsking = true;
    m_web.send(std::move(request), [source = QPointer(this)](const WebOutcome& outcome) {
        if (source)
            source->answered(outcome);
    });
}

void AddressSource::answered(const WebOutcome& outcome) {
    m_isAsking = false;
    if (!outcome)
        return goOnFailing(outcome.error());
    const int status = outcome->status;
    if (status / 100 == 2)
        return takeBody(*outcome);
    if (status != notModified || !readAt())
        return goOnFailing(u"The server answered %1"_s.arg(status));
    m_failures = 0;
    confirm();
}

void AddressSource::takeBody(const WebAnswer& answer) {
    auto events = readCalendar(answer.body, m_reading.reader);
    if (!events)
        return goOnFailing(u"The answer is no calendar"_s);
    m_failures = 0;
    m_kept = {
        .etag = answer.etag,
        .lastModified = answer.lastModified,
        .fetchedAt = now(),
        .body = answer.body};
    keepBody(m_reading.keptPath, m_kept);
    m_kept.body.clear();
    take({{.name = m_reading.name, .events = std::move(*events)}});
}

void AddressSource::goOnFailing(const QString& error) {
    ++m_failures;
    fail(error);
}

} // namespace lumora::companion
