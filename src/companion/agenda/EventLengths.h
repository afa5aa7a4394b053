#pragma once

#include "companion/agenda/EventRecord.h"

#include <libical/ical.h>

#include <optional>

namespace lumora::companion {

/// The longest that anything lasts: what is longer was never meant.
inline constexpr qint64 longestLength = 3'660 * secondsOfDay;

/// The duration that `property` holds; absent when it holds none.
[[nodiscard]] std::optional<icaldurationtype> durationIn(const icalproperty& property);

/// How long an event lasts that begins at `start`. Without an end and a duration a date lasts its
/// day and a time no time. Never negative; dates last whole days.
[[nodiscard]] EventLength lengthOf(
    const CalendarTime& start, const std::optional<CalendarTime>& end,
    const std::optional<icaldurationtype>& duration);

/// How long a period lasts, whose end stands in the zone of its start.
[[nodiscard]] EventLength lengthOfPeriod(const icalperiodtype& period);

} // namespace lumora::companion
