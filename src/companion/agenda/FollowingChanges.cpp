#include "companion/agenda/FollowingChanges.h"

#include <algorithm>

namespace lumora::companion {

namespace {

// The date of `master` that `replaced` means, which may stand in another zone, or without a time.
CalendarTime
plannedDate(const EventRecord& master, const CalendarTime& replaced, const OffsetAt& here) {
    CalendarTime planned = master.start;
    const qint64 intoDay = planned.local - planned.day();
    if (replaced.isDate || planned.isDate) {
        planned.local = replaced.day() + intoDay;
    } else {
        const qint64 utc = replaced.utc(here);
        planned.local = utc + planned.zoneOr(here)(utc);
    }
    return planned;
}

} // namespace

std::vector<FollowingChange>
followingChanges(const Series& series, const EventRecord& master, const OffsetAt& here) {
    std::vector<FollowingChange> changes;
    for (const EventRecord* const moved : series.moved) {
        if (!moved->replacesFollowing)
            continue;
        const CalendarTime planned = plannedDate(master, *moved->replaces, here);
        changes.push_back(
            {.event = moved,
             .from = planned.utc(here),
             .shift = moved->start.local - planned.local});
    }
    std::ranges::sort(changes, {}, &FollowingChange::from);
    return changes;
}

const FollowingChange* changeFor(
    const std::vector<FollowingChange>& changes, const CalendarTime& start, const OffsetAt& here) {
    if (changes.empty()) // as nearly always; to ask takes a look at zones
        return nullptr;
    const auto later =
        std::ranges::upper_bound(changes, start.utc(here), {}, &FollowingChange::from);
    return later == changes.begin() ? nullptr : &*std::prev(later);
}

} // namespace lumora::companion
