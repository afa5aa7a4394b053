#pragma once

#include "briefing/Instant.h"

namespace lumora {

/// What a repeating timer does when it is woken, for whatever reason.
struct TickPlan {
    bool due = false; ///< the tick came due and fires, once however many were missed
    Instant deadline; ///< when the next tick comes due

    bool operator==(const TickPlan&) const = default;
};

/// Plans a timer of `interval` (above zero) that is woken at `now` while its tick comes due at
/// `deadline`. After a tick the next one keeps the rhythm of `deadline` and lies after `now`. A
/// clock that was set back never makes the wait longer than one interval.
TickPlan planTick(Instant deadline, std::chrono::seconds interval, Instant now);

} // namespace lumora
