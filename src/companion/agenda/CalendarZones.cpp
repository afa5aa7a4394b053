#include "companion/agenda/CalendarZones.h"

#include "companion/agenda/FileZone.h"
#include "companion/agenda/ZoneNames.h"

#include <tuple>

namespace lumora::companion {

namespace {

// Calendars of a whole company have some dozens.
constexpr qsizetype mostZones = 500;

// Texts share the zones of the system: a folder has thousands of files and a handful of zones.
SharedZone sharedSystemZone(const QTimeZone& zone) {
    thread_local QHash<QByteArray, SharedZone> shared;
    SharedZone& kept = shared[zone.id()];
    if (!kept)
        kept = std::make_shared<const OffsetAt>(offsetsOf(zone));
    return kept;
}

} // namespace

SharedZone CalendarZones::utc() {
    static const auto zone = std::make_shared<const OffsetAt>([](qint64) { return 0; });
    return zone;
}

SharedZone CalendarZones::named(const QByteArray& name) {
    const auto known = m_named.constFind(name);
    if (known != m_named.constEnd())
        return known.value();
    if (m_named.size() >= mostZones)
        return nullptr;
    return m_named.insert(name, found(name)).value();
}

SharedZone CalendarZones::found(const QByteArray& name) {
    if (const auto zone = systemZone(name))
        return sharedSystemZone(*zone);
    if (!m_isRead)
        readDefinitions();
    m_isRead = true;
    return m_defined.value(name);
}

void CalendarZones::readDefinitions() {
    RuleBudget budget{
        .dates = 200'000, .eventDates = 2'000, .time = std::chrono::milliseconds(500)};
    std::ignore = m_calendar.forEach("VTIMEZONE", [&](icalcomponent& definition) {
        icalproperty* const id = icalcomponent_get_first_property(&definition, ICAL_TZID_PROPERTY);
        const char* const name = id ? icalproperty_get_tzid(id) : nullptr;
        auto zone = name ? fileZone(definition, budget) : std::nullopt;
        if (zone)
            m_defined.insert(name, std::make_shared<const OffsetAt>(std::move(*zone)));
        return m_defined.size() < mostZones;
    });
}

} // namespace lumora::companion
