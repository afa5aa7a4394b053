#pragma once

#include <QTimeZone>

#include <functional>

namespace lumora::companion {

/// The offset from UTC, in seconds, at an instant in seconds since 1970.
using OffsetAt = std::function<qint64(qint64 utc)>;

/// The offsets of `zone`, by the system's table of zones.
[[nodiscard]] OffsetAt offsetsOf(const QTimeZone& zone);

/// The instant, in seconds since 1970, of what clocks show as `local`: a date and time in seconds
/// since 1970, read as if it were UTC. Of two instants at which clocks show the same, the first;
/// what clocks leave out is taken as if they had not been put forward yet.
[[nodiscard]] qint64 utcOf(const OffsetAt& offsetAt, qint64 local);

} // namespace lumora::companion
