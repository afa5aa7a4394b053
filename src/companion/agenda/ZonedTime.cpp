#include "companion/agenda/ZonedTime.h"

#include <QDateTime>

namespace lumora::companion {

OffsetAt offsetsOf(const QTimeZone& zone) {
    return [zone](qint64 utc) -> qint64 {
        return zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(utc, QTimeZone::utc()));
    };
}

qint64 utcOf(const OffsetAt& offsetAt, qint64 local) {
    // Clocks are put forward and back by less than a day, and not twice within two days.
    constexpr qint64 day = 86'400;
    const qint64 before = offsetAt(local - day);
    const qint64 byBefore = local - before;
    if (offsetAt(byBefore) == before)
        return byBefore;
    const qint64 after = offsetAt(local + day);
    const qint64 byAfter = local - after;
    return offsetAt(byAfter) == after ? byAfter : byBefore;
}

} // namespace lumora::companion
