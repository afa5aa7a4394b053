#pragma once

#include "companion/agenda/AgendaEvent.h"
#include "companion/agenda/Recurrence.h"
#include "companion/calendars/CalendarSettings.h"
#include "companion/calendars/CalendarSource.h"
#include "companion/fetching/Web.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimeZone>

#include <functional>
#include <memory>

namespace lumora::companion {

/// What the calendars need from outside.
struct CalendarSurroundings {
    Web& web;                        ///< outlives the calendars
    Now now;                         ///< for what happens by itself
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

    /// Begins to fetch what is due. To be called at the start and then every minute or so. Files
    /// are read by themselves as well, when they change.
    void refreshDue();

    /// Whether anything is still under way that refreshDue() began.
    [[nodiscard]] bool isRefreshing() const;

    /// The local day of `now` where the reader is in `zone`.
    [[nodiscard]] static TimeSpan localDay(std::chrono::sys_seconds now, const QTimeZone& zone);

Q_SIGNALS:
    /// today() and states() may answer otherwise than before.
    void changed();

private:
    /// A calendar of the configuration, and what reads it.
    struct Calendar {
        CalendarSettings settings;
        std::unique_ptr<CalendarSource> source; ///< never null
    };

    /// What was worked out for a day.
    struct KnownDay {
        TimeSpan day;
        QByteArray zone;
        Agenda agenda;
        std::vector<int> counts; ///< how many of the events come from each calendar
    };

    std::unique_ptr<CalendarSource> sourceOf(const CalendarSettings& calendar);
    const KnownDay& known(std::chrono::sys_seconds now);
    void workOut(KnownDay& day, const QTimeZone& zone) const;

    AgendaSettings m_settings;
    CalendarSurroundings m_with;
    std::vector<Calendar> m_calendars;
    std::optional<KnownDay> m_known;
};

} // namespace lumora::companion
