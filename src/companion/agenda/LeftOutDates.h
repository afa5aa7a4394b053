#pragma once

#include "companion/agenda/CalendarTime.h"

#include <unordered_set>

namespace lumora::companion {

/// The dates of a series on which it does not take place as it otherwise would.
class LeftOutDates {
public:
    /// `here` is the reader's zone; outlives this.
    explicit LeftOutDates(const OffsetAt& here)
        : m_here(here) {}

    void add(const CalendarTime& date);

    /// Whether `start` is left out. Where one of the two is a date and the other has a time, the
    /// day counts that is written.
    [[nodiscard]] bool contain(const CalendarTime& start) const;

private:
    const OffsetAt& m_here;
    std::unordered_set<qint64> m_days;      ///< of dates
    std::unordered_set<qint64> m_timedDays; ///< of dates with a time
    std::unordered_set<qint64> m_instants;
};

} // namespace lumora::companion
