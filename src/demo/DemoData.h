#pragma once

#include "briefing/Instant.h"
#include "demo/DemoScenario.h"

#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace lumora {

/// A habit of the demo; done once it was logged as often as wanted.
struct DemoHabit {
    QString id;
    QString name;
    int count = 0;  ///< times logged today
    int target = 1; ///< times wanted today
    int streak = 0;

    bool isDone() const { return count >= target; }
};

/// A chore of the demo.
struct DemoChore {
    QString id;
    QString name;
    QString room;
    std::optional<int> daysOverdue; ///< absent: never done
};

/// One slice of the demo's spending.
struct DemoBucket {
    QString key;
    QString label;
    QString icon;
    QString color;
    double amount = 0;
};

/// The demo's spending figures.
struct DemoSpending {
    double monthToDate = 0;
    double sameDayLastMonth = 0;
    QList<DemoBucket> top;
    QString asOf;           ///< ISO day
    double generatedAt = 0; ///< seconds since 1970
    bool stale = false;

    /// When new figures were last asked for; absent: never.
    std::optional<Instant> refreshAsked;
    /// Whether figures that were asked for have not come yet.
    bool refreshUnderWay = false;
};

/// A captured thought.
struct DemoCapture {
    QString text;
    Instant at;
};

/// Everything of the demo that actions change. The day's events are not in it: they never change.
struct DemoData {
    QList<DemoHabit> habits;
    QList<DemoChore> chores; ///< all that are due, most urgent first
    std::optional<double> productiveShare;
    std::optional<DemoSpending> spending;
    QList<DemoCapture> inbox; ///< oldest first
};

/// The data that `scenario` begins with, on the day of `dayFrom` in `zone`.
DemoData initialDemoData(DemoScenario scenario, Instant dayFrom, const QTimeZone& zone);

} // namespace lumora
