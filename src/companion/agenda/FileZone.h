#pragma once

#include "companion/agenda/IcalHandles.h"
#include "companion/agenda/Recurrence.h"
#include "companion/agenda/ZonedTime.h"

#include <optional>

namespace lumora::companion {

/// The offsets that `zone`, a VTIMEZONE, lays down for the years in which agendas are asked for.
/// Absent when it lays down none.
[[nodiscard]] std::optional<OffsetAt> fileZone(icalcomponent& zone, RuleBudget& budget);

} // namespace lumora::companion
