#pragma once

#include "companion/agenda/EventRecord.h"

#include <vector>

namespace lumora::companion {

/// What belongs together in a calendar, by its identifier.
struct Series {
    std::vector<const EventRecord*> masters; ///< each repeats by itself, or takes place once
    std::vector<const EventRecord*> moved;   ///< single dates that replace those of the masters
};

/// The series of a calendar, for a reader in `here`. Of what was edited the last edition counts.
/// Points into `events`.
[[nodiscard]] std::vector<Series>
seriesOf(const std::vector<EventRecord>& events, const OffsetAt& here);

} // namespace lumora::companion
