#pragma once

#include "briefing/Briefing.h"

#include <QLocale>
#include <QTimeZone>

/// The panel's wording: what its sections and rows say about a briefing.
namespace lumora::PanelTexts {

/// The entries of today that are not over at `now`, in the producer's order. All-day entries and
/// entries without an end are never over.
std::vector<BriefEvent> upcomingEvents(const Briefing& briefing, Instant now);

/// The digest of the folded events section, e.g. "3 left".
QString eventsSummary(const Briefing& briefing, const std::vector<BriefEvent>& upcoming);

/// What stands in the place of the events when none is upcoming.
QString noEventsText(const Briefing& briefing);

/// The line below the last row shown of a section with more than it can show, e.g. "+3 more".
QString moreText(qsizetype remaining);

/// The line below the last event shown, e.g. "+3 more today".
QString moreEventsText(qsizetype remaining);

/// The digest of the folded habits section, e.g. "2/5 done".
QString habitsSummary(const Habits& habits);

/// The digest of the folded chores section, e.g. "7 due".
QString choresSummary(const Chores& chores);

/// The start of `event` in `zone`, "all-day", or nothing for an entry without a start.
QString timeLabel(const BriefEvent& event, const QTimeZone& zone, const QLocale& locale);

/// How long a chore has been waiting, e.g. "3d over".
QString overdueLabel(const Chore& chore);

/// Whether a chore is at least a day late.
bool isOverdue(const Chore& chore);

QString habitToolTip(const Habit& habit);
QString choreToolTip(const Chore& chore);

/// Today's count against the target, e.g. "2/8"; only counted habits have one.
std::optional<QString> countLabel(const Habit& habit);

/// The current streak, e.g. "4🔥"; absent without one.
std::optional<QString> streakLabel(const Habit& habit);

/// What a screen reader says of a habit's row, e.g. "Read, not done, streak 4".
QString habitAccessibleName(const Habit& habit);

/// What a screen reader says of a chore's row, e.g. "Water plants, 3 days overdue".
QString choreAccessibleName(const Chore& chore);

/// What a screen reader says of an event's row, e.g. "9:30 am, Standup, Room 4".
QString eventAccessibleName(const BriefEvent& event, const QString& timeLabel);

/// What an event's join button is called, e.g. "Join Standup".
QString joinText(const BriefEvent& event);

/// `section` as a tooltip of its header: "Collapse Habits" or "Expand Habits".
QString foldToolTip(const QString& title, bool collapsed);

} // namespace lumora::PanelTexts
