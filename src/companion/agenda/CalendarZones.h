#pragma once

#include "companion/agenda/CalendarTime.h"
#include "companion/agenda/ComponentReader.h"

#include <QByteArray>
#include <QHash>

namespace lumora::companion {

/// The zones that one iCalendar text names. The system's own ones come first, because what
/// programs write into calendars is out of date, shortened or wrong more often than not.
class CalendarZones {
public:
    /// `calendar` is looked into for definitions when one is needed; it outlives this.
    explicit CalendarZones(const ComponentReader& calendar)
        : m_calendar(calendar) {}

    /// UTC.
    [[nodiscard]] static SharedZone utc();

    /// The zone called `name`; null when nobody knows it, which means the reader's own.
    [[nodiscard]] SharedZone named(const QByteArray& name);

private:
    SharedZone found(const QByteArray& name);
    void readDefinitions();

    const ComponentReader& m_calendar;
    bool m_isRead = false;
    QHash<QByteArray, SharedZone> m_defined;
    QHash<QByteArray, SharedZone> m_named;
};

} // namespace lumora::companion
