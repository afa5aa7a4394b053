#include "briefing/MeetingSelection.h"

#include <algorithm>
#include <iterator>

namespace lumora {

namespace {

bool isCandidate(const BriefEvent& event, Instant now, Seconds threshold) {
    if (!event.start || event.allDay)
        return false;
    if (event.end && secondsBetween(*event.start, *event.end) >= threshold)
        return false;
    return event.end.value_or(*event.start) > now;
}

Instant endOrFarFuture(const BriefEvent& event) {
    return event.end.value_or(Instant::max());
}

} // namespace

std::vector<BriefEvent>
meetingCandidates(const Briefing& briefing, Instant now, Seconds threshold) {
    std::vector<BriefEvent> candidates;
    std::ranges::copy_if(
        briefing.eventsToday, std::back_inserter(candidates),
        [&](const BriefEvent& event) { return isCandidate(event, now, threshold); });
    std::ranges::stable_sort(candidates, {}, [](const BriefEvent& event) { return *event.start; });
    return candidates;
}

std::optional<BriefEvent> upcomingMeeting(const std::vector<BriefEvent>& candidates, Instant now) {
    const auto found = std::ranges::find_if(
        candidates, [now](const BriefEvent& event) { return *event.start > now; });
    return found == candidates.end() ? std::nullopt : std::optional(*found);
}

std::optional<BriefEvent>
meetingInProgress(const std::vector<BriefEvent>& candidates, Instant now) {
    const BriefEvent* chosen = nullptr;
    for (const BriefEvent& event : candidates) {
        if (*event.start > now)
            continue;
        if (!chosen || endOrFarFuture(event) < endOrFarFuture(*chosen))
            chosen = &event;
    }
    return chosen ? std::optional(*chosen) : std::nullopt;
}

std::optional<BriefEvent> nextMeeting(const Briefing& briefing, Instant now, Seconds threshold) {
    const auto candidates = meetingCandidates(briefing, now, threshold);
    if (auto upcoming = upcomingMeeting(candidates, now))
        return upcoming;
    return meetingInProgress(candidates, now);
}

} // namespace lumora
