#include "companion/agenda/EventLengths.h"

#include "companion/agenda/IcalTimes.h"

#include <algorithm>

namespace lumora::companion {

namespace {

EventLength clamped(qint64 local, qint64 exact) {
    const qint64 shown = std::clamp<qint64>(local, 0, longestLength);
    return {.local = shown, .exact = std::clamp<qint64>(exact, 0, longestLength - shown)};
}

EventLength lasting(const icaldurationtype& duration) {
    if (duration.is_neg)
        return {};
    const qint64 days = qint64{duration.weeks} * 7 + duration.days;
    const qint64 exact =
        qint64{duration.hours} * 3'600 + qint64{duration.minutes} * 60 + duration.seconds;
    return clamped(days * secondsOfDay, exact);
}

// A part of a day takes all of it, and so does nothing.
EventLength inDays(const EventLength& length) {
    const qint64 days = (length.local + length.exact + secondsOfDay - 1) / secondsOfDay;
    return {.local = std::max<qint64>(days, 1) * secondsOfDay, .exact = 0};
}

// Where both are read in one zone, the clocks of that zone count: a night shift ends at six,
// whatever happens to the clocks in that night.
EventLength between(const CalendarTime& start, const CalendarTime& end) {
    if (end.isDate || start.isDate || !end.zone || !start.zone || end.zone == start.zone)
        return clamped(end.local - start.local, 0);
    const OffsetAt noOffset = [](qint64) { return 0; };
    return clamped(0, end.utc(noOffset) - start.utc(noOffset));
}

} // namespace

std::optional<icaldurationtype> durationIn(const icalproperty& property) {
    const icalvalue* const value = icalproperty_get_value(&property);
    if (!value || icalvalue_isa(value) != ICAL_DURATION_VALUE)
        return std::nullopt;
    return icalvalue_get_duration(value);
}

EventLength lengthOf(
    const CalendarTime& start, const std::optional<CalendarTime>& end,
    const std::optional<icaldurationtype>& duration) {
    EventLength length;
    if (end)
        length = between(start, *end);
    else if (duration)
        length = lasting(*duration);
    return start.isDate ? inDays(length) : length;
}

EventLength lengthOfPeriod(const icalperiodtype& period) {
    const auto start = writtenSeconds(period.start);
    const auto end = writtenSeconds(period.end);
    if (start && end && !icaltime_is_null_time(period.end))
        return clamped(*end - *start, 0);
    return lasting(period.duration);
}

} // namespace lumora::companion
