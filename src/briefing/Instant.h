#pragma once

#include <QDateTime>
#include <QTimeZone>

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

/// UTC as QDateTime takes it: by a name that Qt 6.5 introduced, to deprecate the other later.
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
inline constexpr auto kUtc = QTimeZone::UTC;
#else
inline constexpr auto kUtc = Qt::UTC;
#endif

/// `instant` as a date-time in UTC, cut to whole milliseconds (toward the past).
inline QDateTime toDateTime(Instant instant) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(instant);
    return QDateTime::fromMSecsSinceEpoch(milliseconds.time_since_epoch().count(), kUtc);
}

} // namespace lumora
