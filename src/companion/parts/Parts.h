#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace lumora::companion {

/// A habit as the briefing has it. None of the numbers is negative.
struct HabitState {
    QString id;
    QString name;
    bool done = false;
    qint64 count = 0;  ///< times logged today
    qint64 target = 0; ///< times wanted today
    qint64 streak = 0; ///< days in a row on which it was done

    bool operator==(const HabitState&) const = default;
};

struct HabitsPart {
    qint64 done = 0;
    qint64 total = 0;
    std::vector<HabitState> items;

    bool operator==(const HabitsPart&) const = default;
};

/// A chore that is due.
struct ChoreState {
    QString id;
    QString name;
    QString room;
    std::optional<qint64> daysOverdue; ///< 0: due today; absent: never done

    bool operator==(const ChoreState&) const = default;
};

struct ChoresPart {
    qint64 count = 0;
    std::vector<ChoreState> top;

    bool operator==(const ChoresPart&) const = default;
};

struct FocusPart {
    std::optional<double> productiveShare; ///< fraction of 1; absent: no figure

    bool operator==(const FocusPart&) const = default;
};

/// One slice of the month's spending.
struct BucketPart {
    QString bucket;
    QString label;
    QString icon;
    QString color;
    double amount = 0;

    bool operator==(const BucketPart&) const = default;
};

struct SpendingPart {
    double mtd = 0;              ///< this month so far
    double sameDayLastMonth = 0; ///< last month up to the same day
    std::optional<double> deltaFraction;
    std::vector<BucketPart> top;
    QString asOf;
    double generatedAt = 0; ///< changes when the figures do
    bool stale = false;

    bool operator==(const SpendingPart&) const = default;
};

} // namespace lumora::companion
