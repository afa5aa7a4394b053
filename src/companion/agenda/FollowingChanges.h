#pragma once

#include "companion/agenda/Series.h"

#include <vector>

namespace lumora::companion {

/// A change of a series that holds from one of its dates on.
struct FollowingChange {
    const EventRecord* event = nullptr; ///< what takes place from then on; never null
    qint64 from = 0;                    ///< the first date it holds for, in seconds since 1970
    qint64 shift = 0;                   ///< by how many seconds clocks show its times later

    /// What takes place where the series had planned `start`.
    [[nodiscard]] CalendarTime movedFrom(const CalendarTime& start) const {
        return {
            .local = start.local + shift, .isDate = event->start.isDate, .zone = event->start.zone};
    }
};

/// Those of `master` in `series`, in the order in which they come into force, for a reader in
/// `here`. Points into `series`.
[[nodiscard]] std::vector<FollowingChange>
followingChanges(const Series& series, const EventRecord& master, const OffsetAt& here);

/// The one of `changes` that holds for what was planned at `start`; null: none does.
[[nodiscard]] const FollowingChange* changeFor(
    const std::vector<FollowingChange>& changes, const CalendarTime& start, const OffsetAt& here);

} // namespace lumora::companion
