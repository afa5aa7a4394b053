#pragma once

#include <QDateTime>

#include <chrono>

namespace lumora {

/// A point on the UTC time line with microsecond resolution. Wide enough for every four-digit year.
using Instant = std::chrono::sys_time<std::chrono::microseconds>;

/// A signed span between two instants, in seconds.
using Seconds = std::chrono::duration<double>;

/// The span from `from` to `to` in seconds; negative when `to` lies earlier.
inline Seconds secondsBetween(Instant from, Instant to) {
    return to - from;
}

/// `instant` as a date-time in UTC, cut to whole milliseconds (toward the past).
inline QDateTime toDateTime(Instant instant) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(instant);
    return QDateTime::fromMSecsSinceEpoch(milliseconds.time_since_epoch().count(), Qt::UTC);
}

} // namespace lumora
