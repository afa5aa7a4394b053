#include "companion/agenda/CalendarText.h"

#include "companion/agenda/CalendarZones.h"
#include "companion/agenda/ComponentReader.h"
#include "companion/agenda/EventReader.h"

namespace lumora::companion {

namespace {

constexpr std::size_t mostEvents = 100'000;

} // namespace

std::optional<std::vector<EventRecord>>
readCalendar(const QByteArray& text, const ReaderSettings& settings) {
    if (text.size() > longestCalendarText)
        return std::nullopt;
    const ComponentReader components(text);
    CalendarZones zones(components);
    std::vector<EventRecord> events;
    const bool isCalendar = components.forEach("VEVENT", [&](icalcomponent& event) {
        if (auto read = readEvent(event, zones, settings))
            events.push_back(std::move(*read));
        return events.size() < mostEvents;
    });
    if (!isCalendar)
        return std::nullopt;
    events.shrink_to_fit();
    return events;
}

} // namespace lumora::companion
