#pragma once

#include "briefing/Briefing.h"
#include "ui/rows/RowItem.h"

#include <QLocale>

#include <algorithm>
#include <span>

namespace lumora {

/// How many habits, chores or buckets a section shows. No day has as many; one that is said to must
/// not keep the panel from opening.
inline constexpr std::size_t maximumSectionRows = 1000;

/// Those of `values`, in order, that a section shows.
template <typename Value>
[[nodiscard]] std::span<const Value> shownInSection(const std::vector<Value>& values) {
    return std::span(values).first(std::min(values.size(), maximumSectionRows));
}

/// A text in the caption size and the secondary colour.
[[nodiscard]] RowContent captionRow(const QString& text);

/// A text in the callout size and the secondary colour.
[[nodiscard]] RowContent calloutRow(const QString& text);

/// "Today" and how old the data is; `age` is empty before the first success.
[[nodiscard]] RowContent headerRow(const QString& age);

/// A section's header. `summary` is shown only while folded; `rotation` is the chevron's, degrees.
[[nodiscard]] RowContent sectionHeaderRow(
    const QString& title, const QString& symbol, std::optional<qint64> badge,
    const std::optional<QString>& summary, double rotation);

/// The time of an event in the column that the times of all rows stand in.
struct TimeCell {
    QString text;
    double column = 0; ///< points
};

/// The width in points of the column for `times`.
[[nodiscard]] double timeColumn(const QStringList& times, const Theme& theme);

/// An event's time, title and place; the join button is not part of it.
[[nodiscard]] RowContent eventRow(const BriefEvent& event, const TimeCell& time, bool isNext);

[[nodiscard]] RowContent habitRow(const Habit& habit);
[[nodiscard]] RowContent choreRow(const Chore& chore);

/// Habit progress and focus share on one line; empty when there is neither.
[[nodiscard]] RowContent focusRow(const Briefing& briefing);

/// The month's figure.
[[nodiscard]] RowContent spendingTotalRow(const Spending& spending, const QLocale& locale);

/// The pace against last month. Arrow and colour follow the sign alone, however small the change.
[[nodiscard]] RowContent spendingPaceRow(const Spending& spending);

/// What stands before the labels of all buckets, so that these line up.
struct BucketColumns {
    bool bars = false; ///< at least one bucket has a bar
    double icons = 0;  ///< the width of the widest icon, points
};

[[nodiscard]] BucketColumns bucketColumns(std::span<const Bucket> buckets, const Theme& theme);

/// One bucket; a colour code that means nothing only leaves the bar out.
[[nodiscard]] RowContent
bucketRow(const Bucket& bucket, const BucketColumns& columns, const QLocale& locale);

/// The note below figures that are not of today.
[[nodiscard]] RowContent spendingAsOfRow(const Spending& spending);

} // namespace lumora
