#include "companion/agenda/CalendarText.h"

#include "companion/agenda/CalendarZones.h"
#include "companion/agenda/EventReader.h"
#include "companion/agenda/IcalHandles.h"

namespace lumora::companion {

namespace {

// A calendar has events, and those have alarms.
constexpr int deepestComponent = 8;
constexpr std::size_t mostEvents = 100'000;

bool beginsWith(QByteArrayView line, QByteArrayView word) {
    return line.size() >= word.size() &&
           line.first(word.size()).compare(word, Qt::CaseInsensitive) == 0;
}

/// The text as the library takes it: without components within components within components, which
/// it would follow until the stack is full, and with a property that it does not know by a name for
/// unknown ones. Absent when it is no use.
std::optional<QByteArray> prepared(const QByteArray& text) {
    if (text.size() > longestCalendarText)
        return std::nullopt;
    QByteArray made;
    made.reserve(text.size() + 1024);
    int depth = 0;
    for (qsizetype from = 0; from < text.size();) {
        const qsizetype feed = text.indexOf('\n', from);
        const qsizetype next = feed < 0 ? text.size() : feed + 1;
        const QByteArrayView line = QByteArrayView(text).sliced(from, next - from);
        from = next;
        if (beginsWith(line, "BEGIN"))
            ++depth;
        else if (beginsWith(line, "END"))
            depth = std::max(0, depth - 1);
        if (depth > deepestComponent)
            return std::nullopt;
        if (beginsWith(line, "CONFERENCE"))
            made += "X-";
        made += line;
    }
    return made;
}

void readEvents(
    std::vector<EventRecord>& events, icalcomponent& parent, CalendarZones& zones,
    const ReaderSettings& settings) {
    forEachChild(parent, [&](icalcomponent& child) {
        if (icalcomponent_isa(&child) == ICAL_VCALENDAR_COMPONENT)
            readEvents(events, child, zones, settings);
        if (icalcomponent_isa(&child) == ICAL_VEVENT_COMPONENT) {
            if (auto event = readEvent(child, zones, settings))
                events.push_back(std::move(*event));
        }
        return events.size() < mostEvents;
    });
}

bool isCalendar(const icalcomponent& root) {
    const icalcomponent_kind kind = icalcomponent_isa(&root);
    return kind == ICAL_VCALENDAR_COMPONENT || kind == ICAL_XROOT_COMPONENT;
}

} // namespace

std::optional<std::vector<EventRecord>>
readCalendar(const QByteArray& text, const ReaderSettings& settings) {
    const auto sound = prepared(text);
    if (!sound)
        return std::nullopt;
    const IcalTree tree(icalparser_parse_string(sound->constData()));
    if (!tree || !isCalendar(*tree))
        return std::nullopt;
    CalendarZones zones(*tree);
    std::vector<EventRecord> events;
    readEvents(events, *tree, zones, settings);
    events.shrink_to_fit();
    return events;
}

} // namespace lumora::companion
