#include "companion/agenda/LeftOutDates.h"

namespace lumora::companion {

void LeftOutDates::add(const CalendarTime& date) {
    if (date.isDate) {
        m_days.insert(date.day());
        return;
    }
    m_timedDays.insert(date.day());
    m_instants.insert(date.utc(m_here));
}

bool LeftOutDates::contain(const CalendarTime& start) const {
    if (start.isDate)
        return m_days.contains(start.day()) || m_timedDays.contains(start.day());
    return m_instants.contains(start.utc(m_here)) || m_days.contains(start.day());
}

} // namespace lumora::companion
