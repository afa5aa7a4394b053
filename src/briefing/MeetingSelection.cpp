#include "briefing/MeetingSelection.h"

#include <utility>

namespace lumora {

namespace {

/// When a candidate that has begun ends, and when it began. One without an end would be over.
std::pair<Instant, Instant> endAndStart(const BriefEvent& event) {
    return {*event.end, *event.start};
}

std::optional<BriefEvent> ifAny(const BriefEvent* event) {
    return event ? std::optional(*event) : std::nullopt;
}

} // namespace

bool isMeetingCandidate(const BriefEvent& event, Instant now, Seconds threshold) {
    if (!event.start || event.allDay)
        return false;
    if (event.end && secondsBetween(*event.start, *event.end) >= threshold)
        return false;
    return event.end.value_or(*event.start) > now;
}

std::optional<BriefEvent>
upcomingMeeting(const Briefing& briefing, Instant now, Seconds threshold) {
    const BriefEvent* chosen = nullptr;
    for (const BriefEvent& event : briefing.eventsToday) {
        if (!isMeetingCandidate(event, now, threshold) || *event.start <= now)
            continue;
        if (!chosen || *event.start < *chosen->start)
            chosen = &event;
    }
    return ifAny(chosen);
}

std::optional<BriefEvent>
meetingInProgress(const Briefing& briefing, Instant now, Seconds threshold) {
    const BriefEvent* chosen = nullptr;
    for (const BriefEvent& event : briefing.eventsToday) {
        if (!isMeetingCandidate(event, now, threshold) || *event.start > now)
            continue;
        if (!chosen || endAndStart(event) < endAndStart(*chosen))
            chosen = &event;
    }
    return ifAny(chosen);
}

std::optional<BriefEvent> nextMeeting(const Briefing& briefing, Instant now, Seconds threshold) {
    if (auto upcoming = upcomingMeeting(briefing, now, threshold))
        return upcoming;
    return meetingInProgress(briefing, now, threshold);
}

} // namespace lumora
