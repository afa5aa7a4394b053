#include "companion/calendars/Calendars.h"

#include "companion/agenda/MergedAgenda.h"
#include "companion/calendars/AddressSource.h"
#include "companion/calendars/FileSource.h"
#include "companion/calendars/FolderSource.h"
#include "companion/calendars/GnomeSource.h"
#include "companion/calendars/Outage.h"

#include <QDateTime>

#include <algorithm>

namespace lumora::companion {

namespace {

template <typename... Visitors>
struct EachPlace : Visitors... {
    using Visitors::operator()...;
};

std::chrono::sys_seconds instant(qint64 seconds) {
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
}

} // namespace

Calendars::Calendars(AgendaSettings settings, CalendarSurroundings with)
    : m_settings(std::move(settings))
    , m_with(std::move(with)) {
    QList<QUrl> addresses;
    for (const CalendarSettings& calendar : m_settings.calendars) {
        m_calendars.push_back({.settings = calendar, .source = sourceOf(calendar)});
        connect(m_calendars.back().source.get(), &CalendarSource::changed, this, [this] {
            m_known.reset();
            Q_EMIT changed();
        });
        if (const auto* const address = std::get_if<IcsAddress>(&calendar.place))
            addresses += address->url;
    }
    forgetOtherBodies(m_settings.cacheFolder, addresses);
}

Calendars::~Calendars() = default;

std::unique_ptr<CalendarSource> Calendars::sourceOf(const CalendarSettings& calendar) {
    const ReaderSettings reader{
        .myAddresses = m_settings.myAddresses, .meetingHosts = m_settings.meetingHosts};
    const Now& now = m_with.now;
    using Made = std::unique_ptr<CalendarSource>;
    return std::visit(
        EachPlace{
            [&](const IcsAddress& address) -> Made {
                return std::make_unique<AddressSource>(
                    AddressReading{
                        .name = calendar.name,
                        .url = address.url,
                        .keptPath = keptBodyPath(m_settings.cacheFolder, address.url),
                        .refresh = m_settings.refresh,
                        .reader = reader},
                    m_with.web, now);
            },
            [&](const IcsFile& file) -> Made {
                return std::make_unique<FileSource>(calendar.name, file.path, reader, now);
            },
            [&](const IcsFolder& folder) -> Made {
                return std::make_unique<FolderSource>(
                    calendar.name, folder.path, m_settings.refresh, reader, now);
            },
            [&](const GnomeCalendars&) -> Made {
                return std::make_unique<GnomeSource>(m_with.bus, m_settings.refresh, reader, now);
            }},
        calendar.place);
}

TimeSpan Calendars::localDay(std::chrono::sys_seconds now, const QTimeZone& zone) {
    const OffsetAt here = offsetsOf(zone);
    const qint64 utc = now.time_since_epoch().count();
    const qint64 start = CalendarTime{.local = utc + here(utc), .isDate = false, .zone = {}}.day();
    return {.from = utcOf(here, start), .to = utcOf(here, start + secondsOfDay)};
}

Agenda Calendars::today(std::chrono::sys_seconds now) {
    const KnownDay& day = known(now);
    Agenda agenda = day.agenda;
    for (const Calendar& calendar : m_calendars) {
        auto outage = outageEvent(
            calendar.settings.name, calendar.source->failingSince(), now, instant(day.day.from),
            instant(day.day.to));
        if (outage)
            agenda.push_back(*std::move(outage));
    }
    sortAgenda(agenda);
    return agenda;
}

std::vector<CalendarState> Calendars::states(std::chrono::sys_seconds now) {
    const KnownDay& day = known(now);
    std::vector<CalendarState> states;
    for (std::size_t i = 0; i < m_calendars.size(); ++i) {
        const CalendarSource& source = *m_calendars[i].source;
        states.push_back(
            {.name = m_calendars[i].settings.name,
             .eventsToday = day.counts[i],
             .readAt = source.readAt(),
             .error = source.error()});
    }
    return states;
}

const Calendars::KnownDay& Calendars::known(std::chrono::sys_seconds now) {
    const QTimeZone zone = m_with.zone();
    const qint64 utc = now.time_since_epoch().count();
    const bool isKnown =
        m_known && m_known->zone == zone.id() && utc >= m_known->day.from && utc < m_known->day.to;
    if (!isKnown) {
        m_known =
            KnownDay{.day = localDay(now, zone), .zone = zone.id(), .agenda = {}, .counts = {}};
        workOut(*m_known, zone);
    }
    return *m_known;
}

void Calendars::workOut(KnownDay& day, const QTimeZone& zone) const {
    const OffsetAt here = offsetsOf(zone);
    std::vector<CalendarPart> parts;
    std::vector<std::size_t> owners;
    for (std::size_t i = 0; i < m_calendars.size(); ++i) {
        for (const NamedEvents& named : m_calendars[i].source->content()) {
            parts.push_back(
                {.name = named.name,
                 .showTransparent = m_calendars[i].settings.showTransparent,
                 .occurrences = occurrencesIn(named.events, day.day, here)});
            owners.push_back(i);
        }
    }
    day.agenda = mergedAgenda(parts);
    day.counts.assign(m_calendars.size(), 0);
    for (const AgendaEvent& event : day.agenda) {
        const auto part = std::ranges::find(parts, event.calendar, &CalendarPart::name);
        ++day.counts[owners[static_cast<std::size_t>(part - parts.begin())]];
    }
}

void Calendars::refreshDue() {
    for (const Calendar& calendar : m_calendars)
        calendar.source->refreshDue();
}

bool Calendars::isRefreshing() const {
    return std::ranges::any_of(
        m_calendars, [](const Calendar& calendar) { return calendar.source->isRefreshing(); });
}

} // namespace lumora::companion
