#pragma once

#include "companion/agenda/AgendaEvent.h"

namespace lumora::companion {

/// How long a calendar may have failed before it says so among the events.
inline constexpr std::chrono::hours quietOutage{3};

/// The all-day event, from `dayStart` to `dayEnd`, that says that the calendar `name` has failed
/// since `failingSince`; absent while it is not worth a word.
[[nodiscard]] std::optional<AgendaEvent> outageEvent(
    const QString& name, std::optional<std::chrono::sys_seconds> failingSince,
    std::chrono::sys_seconds now, std::chrono::sys_seconds dayStart,
    std::chrono::sys_seconds dayEnd);

} // namespace lumora::companion
