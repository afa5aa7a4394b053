#pragma once

#include "companion/agenda/CalendarTime.h"

#include <QByteArray>

#include <chrono>
#include <vector>

namespace lumora::companion {

/// How much work the rules of one calendar may make, so that no calendar can hold the program up.
/// What exceeds it is not repeated any further.
struct RuleBudget {
    int dates = 1'000'000;   ///< that are looked at
    int eventDates = 20'000; ///< of one event that are looked at and shown
    /// That the library may take, of the processor's time: a rule that never comes to a date keeps
    /// it busy for up to a second.
    std::chrono::nanoseconds time = std::chrono::seconds(2);
};

/// Part of the line of time, in seconds: from `from` on and before `to`.
struct TimeSpan {
    qint64 from = 0;
    qint64 to = 0;
};

/// The dates and times, within `span` of local time, at which `rule` (the text of an RRULE) repeats
/// what begins at `start`; `here` is the reader's zone. In order, `start` itself only when it fits
/// the rule. Rules finer than a day, and those that are none, give nothing.
[[nodiscard]] std::vector<qint64> ruleStarts(
    const QByteArray& rule, const CalendarTime& start, TimeSpan span, const OffsetAt& here,
    RuleBudget& budget);

} // namespace lumora::companion
