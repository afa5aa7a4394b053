#pragma once

#include "briefing/Briefing.h"

#include <optional>

namespace lumora {

/// Entries at least this long are background, not meetings. The label and the panel both use it, so
/// that they agree on the meeting.
inline constexpr Seconds backgroundThreshold{21600};

/// Whether `event` is a meeting that is not over at `now`. All-day entries, entries without a start
/// and entries of at least `threshold` are none.
bool isMeetingCandidate(const BriefEvent& event, Instant now, Seconds threshold);

/// The first candidate of today that starts strictly after `now`, among equal starts the first in
/// the producer's order; absent when none does. The producer's own `nextEvent` plays no part, here
/// and below.
std::optional<BriefEvent> upcomingMeeting(const Briefing& briefing, Instant now, Seconds threshold);

/// Of the candidates of today that have begun by `now`, the one that ends first; absent when none
/// has begun. Among equal ends the one that began first wins, and then the producer's order.
std::optional<BriefEvent>
meetingInProgress(const Briefing& briefing, Instant now, Seconds threshold);

/// The meeting that matters at `now`: the next one to start, however far away, else the one in
/// progress; absent when there is neither.
std::optional<BriefEvent> nextMeeting(const Briefing& briefing, Instant now, Seconds threshold);

} // namespace lumora
