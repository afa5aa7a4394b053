#pragma once

#include "companion/agenda/CalendarTime.h"
#include "companion/agenda/IcalHandles.h"

#include <QByteArray>
#include <QHash>

namespace lumora::companion {

/// The zones that one iCalendar text names. The system's own ones come first, because what
/// programs write into calendars is out of date, shortened or wrong more often than not.
class CalendarZones {
public:
    /// `calendar` is looked into for definitions; it outlives this.
    explicit CalendarZones(icalcomponent& calendar)
        : m_calendar(calendar) {}

    /// UTC.
    [[nodiscard]] static SharedZone utc();

    /// The zone called `name`; null when nobody knows it, which means the reader's own.
    [[nodiscard]] SharedZone named(const QByteArray& name);

private:
    SharedZone found(const QByteArray& name);
    void collectDefinitions(icalcomponent& parent);

    icalcomponent& m_calendar;
    bool m_isCollected = false;
    QHash<QByteArray, icalcomponent*> m_definitions;
    QHash<QByteArray, SharedZone> m_named;
};

} // namespace lumora::companion
