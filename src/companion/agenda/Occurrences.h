#pragma once

#include "companion/agenda/EventRecord.h"
#include "companion/agenda/Recurrence.h"

#include <vector>

namespace lumora::companion {

/// One time at which an event takes place, in seconds since 1970.
struct Occurrence {
    const EventRecord* event = nullptr; ///< never null
    qint64 start = 0;
    qint64 end = 0; ///< not before `start`
};

/// When the `events` of a calendar take place within `span` of UTC, for a reader in the zone
/// `here`: all that begins before its end and is not over at its start. Series are repeated, with
/// what was moved in the place of what it replaces. Cancelled and declined ones are among them.
/// In no order. Points into `events`.
[[nodiscard]] std::vector<Occurrence> occurrencesIn(
    const std::vector<EventRecord>& events, TimeSpan span, const OffsetAt& here,
    RuleBudget budget = {});

} // namespace lumora::companion
