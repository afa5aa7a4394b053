#include "companion/agenda/MergedAgenda.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace lumora::companion {

namespace {

using std::chrono::seconds;
using std::chrono::sys_seconds;

/// What tells that two calendars hold the same meeting.
using Meeting = std::tuple<QByteArray, qint64>;

bool isShown(const EventRecord& event, bool showTransparent) {
    if (event.isCancelled || event.isDeclined)
        return false;
    return !event.isTransparent || event.start.isDate || showTransparent;
}

AgendaEvent agendaEvent(const Occurrence& occurrence, const QString& calendar) {
    const EventRecord& event = *occurrence.event;
    return {
        .title = event.title,
        .allDay = event.start.isDate,
        .start = sys_seconds(seconds(occurrence.start)),
        .end = sys_seconds(seconds(occurrence.end)),
        .location = event.location,
        .meetingUrl = event.meetingUrl,
        .calendar = calendar};
}

} // namespace

Agenda mergedAgenda(const std::vector<CalendarPart>& parts) {
    Agenda agenda;
    std::set<Meeting> seen;
    for (const CalendarPart& part : parts) {
        std::set<Meeting> own;
        for (const Occurrence& occurrence : part.occurrences) {
            const EventRecord& event = *occurrence.event;
            const Meeting meeting(event.uid, occurrence.start);
            if (!isShown(event, part.showTransparent) || seen.contains(meeting))
                continue;
            if (!event.uid.isEmpty())
                own.insert(meeting);
            agenda.push_back(agendaEvent(occurrence, part.name));
        }
        seen.merge(own);
    }
    sortAgenda(agenda);
    return agenda;
}

void sortAgenda(Agenda& agenda) {
    const auto order = [](const AgendaEvent& event) {
        return std::tuple(!event.allDay, event.start, event.end);
    };
    std::ranges::stable_sort(agenda, {}, order);
}

} // namespace lumora::companion
