#include "companion/calendars/GnomeSource.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr std::chrono::days before{2};
constexpr std::chrono::days after{8}; // so that a server that fails is not missed at midnight

} // namespace

GnomeSource::GnomeSource(
    QDBusConnection bus, std::chrono::minutes refresh, ReaderSettings reader, Now now)
    : CalendarSource(std::move(now))
    , m_server(std::move(bus))
    , m_refresh(refresh)
    , m_reader(std::move(reader)) {}

void GnomeSource::refreshDue() {
    const auto since = m_askedAt ? now() - *m_askedAt : std::chrono::seconds::max();
    if (m_isAsking || (since >= std::chrono::seconds(0) && since < m_refresh))
        return;
    m_askedAt = now();
    m_isAsking = true;
    m_server.askCalendars([this](tl::expected<std::vector<EvolutionCalendar>, QString> calendars) {
        if (!calendars)
            return giveUp(calendars.error());
        m_calendars = *std::move(calendars);
        m_read.clear();
        m_loss.reset();
        m_next = 0;
        askNext();
    });
}

void GnomeSource::askNext() {
    if (m_next == m_calendars.size())
        return finish();
    const EvolutionCalendar& calendar = m_calendars[m_next];
    const auto seconds = [](std::chrono::sys_seconds time) {
        return qint64{time.time_since_epoch().count()};
    };
    const AskedSpan span{.from = seconds(now() - before), .to = seconds(now() + after)};
    m_server.askEvents(calendar.uid, span, [this](const tl::expected<QByteArray, QString>& text) {
        const QString& name = m_calendars[m_next].name;
        auto events = text ? readCalendar(*text, m_reader) : std::nullopt;
        if (events) {
            m_read.push_back({.name = name, .events = std::move(*events)});
        } else {
            m_loss = text ? u"The desktop's calendars answer something else"_s : text.error();
            // What was read before is better than nothing.
            const auto kept = std::ranges::find(content(), name, &NamedEvents::name);
            if (kept != content().end())
                m_read.push_back(*kept);
        }
        ++m_next;
        askNext();
    });
}

void GnomeSource::finish() {
    m_isAsking = false;
    if (m_read.empty() && m_loss)
        return fail(*m_loss);
    take(std::move(m_read));
    if (m_loss)
        complain(*m_loss);
}

void GnomeSource::giveUp(const QString& error) {
    m_isAsking = false;
    fail(error);
}

} // namespace lumora::companion
