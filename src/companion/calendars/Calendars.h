#pragma once

#include "companion/agenda/AgendaEvent.h"
#include "companion/calendars/CalendarSettings.h"
#include "companion/fetching/Web.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimeZone>

#include <functional>
#include <memory>

namespace lumora::companion {

class CalendarSource;

/// What the calendars need from outside.
struct CalendarSurroundings {
    Web& web;                        ///< outlives the calendars
    std::function<QTimeZone()> zone; ///< where the user is; asked anew each time
    QDBusConnection bus;             ///< where GNOME's calendars are found
};

/// How one calendar of the configuration stands, for people.
struct CalendarState {
    QString name;
    int eventsToday = 0;
    /// When what is shown was last known to be what the place holds; absent: never yet.
    std::optional<std::chrono::sys_seconds> readAt;
    std::optional<QString> error; ///< why the last attempt failed; holds no address

    bool operator==(const CalendarState&) const = default;
};

/// The user's calendars. Everything happens in one thread, which has an event loop and in which no
/// other iCalendar text is read meanwhile; no call waits for anything but files.
class Calendars final : public QObject {
    Q_OBJECT

public:
    Calendars(AgendaSettings settings, CalendarSurroundings with);
    ~Calendars() override;

    /// What the local day of `now` holds, from what is in memory. Worked out once a day and after
    /// changes only. A calendar that has failed for three hours is an all-day event that says so.
    [[nodiscard]] Agenda today(std::chrono::sys_seconds now);

    /// One for each calendar of the configuration, in its order.
    [[nodiscard]] std::vector<CalendarState> states(std::chrono::sys_seconds now);

    /// Begins to fetch what is due, and reads files that have changed. To be called at the start
    /// and then every minute or so.
    void refreshDue(std::chrono::sys_seconds now);

    /// Whether anything is still under way that refreshDue() began.
    [[nodiscard]] bool isRefreshing() const;

Q_SIGNALS:
    /// today() and states() may answer otherwise than before.
    void changed();

private:
    AgendaSettings m_settings;
    CalendarSurroundings m_with;
    std::vector<std::unique_ptr<CalendarSource>> m_sources;
};

} // namespace lumora::companion
