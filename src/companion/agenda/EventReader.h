#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/agenda/CalendarZones.h"

namespace lumora::companion {

/// What `event`, a VEVENT, says. Absent when it has no start.
[[nodiscard]] std::optional<EventRecord>
readEvent(icalcomponent& event, CalendarZones& zones, const ReaderSettings& settings);

} // namespace lumora::companion
