#pragma once

#include "companion/agenda/ZonedTime.h"

#include <memory>

namespace lumora::companion {

/// The number of seconds of a day that has as many hours as most.
inline constexpr qint64 secondsOfDay = 86'400;

/// A zone as several times share it.
using SharedZone = std::shared_ptr<const OffsetAt>;

/// A date, or a date and time, as a calendar writes it.
struct CalendarTime {
    qint64 local = 0; ///< what is written, in seconds since 1970 as if it were UTC; of dates: 0:00
    bool isDate = false;
    SharedZone zone; ///< null: wherever the reader is

    /// The zone to read it in, where the reader is in `here`.
    const OffsetAt& zoneOr(const OffsetAt& here) const { return zone ? *zone : here; }

    /// The instant in seconds since 1970, where the reader is in `here`.
    qint64 utc(const OffsetAt& here) const { return utcOf(zoneOr(here), local); }

    /// The first second of the day that is written.
    qint64 day() const {
        const qint64 intoDay = local % secondsOfDay;
        return local - (intoDay < 0 ? intoDay + secondsOfDay : intoDay);
    }
};

} // namespace lumora::companion
