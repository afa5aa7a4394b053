#pragma once

#include "briefing/Instant.h"

#include <QString>

#include <optional>
#include <vector>

namespace lumora {

/// One entry of today's calendar.
struct BriefEvent {
    QString title;
    std::optional<Instant> start; ///< absent: the entry has no time of its own
    std::optional<Instant> end;   ///< absent: open-ended
    bool allDay = false;
    std::optional<QString> location;
    std::optional<QString> feed; ///< name of the calendar the entry came from
    std::optional<QString> meetingUrl;

    /// Identity in lists: the title, "|", and the start in seconds since 1970 ("0.0" without a
    /// start).
    QString id() const;

    bool operator==(const BriefEvent&) const = default;
};

/// A household task.
struct Chore {
    QString id;
    QString name;
    QString room;
    std::optional<qint64> daysOverdue; ///< whole days; absent: never done

    bool operator==(const Chore&) const = default;
};

/// The chores due. `count` is the producer's own figure and may exceed `top`.
struct Chores {
    qint64 count = 0;
    std::vector<Chore> top;

    bool operator==(const Chores&) const = default;
};

/// A habit and how far it got today.
struct Habit {
    QString id;
    QString name;
    bool done = false;
    qint64 count = 0;  ///< times logged today
    qint64 target = 0; ///< times wanted today
    qint64 streak = 0; ///< length of the current streak

    bool operator==(const Habit&) const = default;
};

/// Today's habits with the producer's totals.
struct Habits {
    qint64 done = 0;
    qint64 total = 0;
    std::vector<Habit> items;

    /// The items still to do, then the done ones, each in list order.
    std::vector<Habit> byRemaining() const;

    bool operator==(const Habits&) const = default;
};

/// How the tracked time was spent.
struct Focus {
    std::optional<double> productiveShare; ///< fraction of 1; absent: no figure

    bool operator==(const Focus&) const = default;
};

/// One slice of the month's spending.
struct Bucket {
    QString bucket; ///< stable key, the slice's identity
    QString label;
    QString icon;      ///< short text drawn before the label
    QString color;     ///< colour code, see Color
    double amount = 0; ///< currency units

    bool operator==(const Bucket&) const = default;
};

/// Month-to-date spending.
struct Spending {
    double mtd = 0;                      ///< currency units, this month so far
    double sameDayLastMonth = 0;         ///< currency units, last month up to the same day
    std::optional<double> deltaFraction; ///< signed fraction of last month; absent: no comparison
    std::vector<Bucket> top;
    QString asOf;           ///< the day of the figures, shown as it stands
    double generatedAt = 0; ///< the producer's time stamp, never interpreted
    bool stale = false;     ///< the daily rollup has not run today

    bool operator==(const Spending&) const = default;
};

/// One person's day, as the dashboard service describes it. Immutable once decoded.
struct Briefing {
    QString date;                        ///< the day described, kept as it stands
    double generatedAt = 0;              ///< the producer's time stamp, never interpreted
    std::optional<BriefEvent> nextEvent; ///< the producer's own idea of what is next; not used here
    std::vector<BriefEvent> eventsToday; ///< in the producer's order
    Chores chores;
    Habits habits;
    Focus focus;
    std::optional<Spending> spending; ///< absent: no spending data

    bool operator==(const Briefing&) const = default;
};

} // namespace lumora
