#pragma once

#include "briefing/Briefing.h"

#include <optional>
#include <vector>

namespace lumora {

/// Entries at least this long are background, not meetings. The label and the panel both use it, so
/// that they agree on the meeting.
inline constexpr Seconds backgroundThreshold{21600};

/// The meetings of today that are not over at `now`, by start; equal starts keep the producer's
/// order. All-day entries, entries without a start and entries of at least `threshold` are none.
/// The producer's own `nextEvent` plays no part.
std::vector<BriefEvent> meetingCandidates(const Briefing& briefing, Instant now, Seconds threshold);

/// The first of `candidates` (from meetingCandidates) that starts strictly after `now`; absent
/// when none does.
std::optional<BriefEvent> upcomingMeeting(const std::vector<BriefEvent>& candidates, Instant now);

/// Of the `candidates` (from meetingCandidates) that have begun by `now`, the one that ends first;
/// absent when none has begun. An absent end counts as the far future, among equal ends the first
/// wins.
std::optional<BriefEvent> meetingInProgress(const std::vector<BriefEvent>& candidates, Instant now);

/// The meeting that matters at `now`: the next one to start, however far away, else the one in
/// progress; absent when there is neither.
std::optional<BriefEvent> nextMeeting(const Briefing& briefing, Instant now, Seconds threshold);

} // namespace lumora
