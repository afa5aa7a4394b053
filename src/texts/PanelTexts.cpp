#include "texts/PanelTexts.h"

#include "briefing/TextBounds.h"
#include "texts/Formatters.h"

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace lumora::PanelTexts {

namespace {

QString ratio(qint64 part, qint64 whole) {
    return QString::number(part) + u'/' + QString::number(whole);
}

/// A name or a title as far as it is worth hearing; what follows it is heard as well.
QString line(const QString& text) {
    return beginning(text, longestLine);
}

QString quoted(const QString& name) {
    return u'\u201C' + line(name) + u'\u201D';
}

} // namespace

std::vector<BriefEvent> upcomingEvents(const Briefing& briefing, Instant now) {
    std::vector<BriefEvent> upcoming;
    std::copy_if(
        briefing.eventsToday.cbegin(), briefing.eventsToday.cend(), std::back_inserter(upcoming),
        [now](const BriefEvent& event) { return event.allDay || !event.end || *event.end >= now; });
    return upcoming;
}

QString eventsSummary(const Briefing& briefing, const std::vector<BriefEvent>& upcoming) {
    if (!upcoming.empty())
        return QString::number(upcoming.size()) + u" left"_s;
    return briefing.eventsToday.empty() ? u"nothing scheduled"_s : u"done for today"_s;
}

QString noEventsText(const Briefing& briefing) {
    return briefing.eventsToday.empty() ? u"Nothing scheduled"_s : u"Nothing left today"_s;
}

QString moreText(qsizetype remaining) {
    return u'+' + QString::number(remaining) + u" more"_s;
}

QString moreEventsText(qsizetype remaining) {
    return moreText(remaining) + u" today"_s;
}

QString habitsSummary(const Habits& habits) {
    return ratio(habits.done, habits.total) + u" done"_s;
}

QString choresSummary(const Chores& chores) {
    return QString::number(chores.count) + u" due"_s;
}

QString timeLabel(const BriefEvent& event, const QTimeZone& zone, const QLocale& locale) {
    if (event.allDay)
        return u"all-day"_s;
    return event.start ? Formatters::clock(*event.start, zone, locale) : QString();
}

QString overdueLabel(const Chore& chore) {
    if (!chore.daysOverdue)
        return u"never done"_s;
    if (*chore.daysOverdue < 1)
        return u"due today"_s;
    return QString::number(*chore.daysOverdue) + u"d over"_s;
}

bool isOverdue(const Chore& chore) {
    return chore.daysOverdue && *chore.daysOverdue >= 1;
}

QString habitToolTip(const Habit& habit) {
    if (habit.target < 2)
        return u"Toggle "_s + quoted(habit.name);
    return u"Log one ("_s + ratio(habit.count, habit.target) + u')';
}

QString choreToolTip(const Chore& chore) {
    return u"Mark "_s + quoted(chore.name) + u" done"_s;
}

std::optional<QString> countLabel(const Habit& habit) {
    return habit.target > 1 ? std::optional(ratio(habit.count, habit.target)) : std::nullopt;
}

std::optional<QString> streakLabel(const Habit& habit) {
    return habit.streak >= 1 ? std::optional(QString::number(habit.streak) + u"🔥"_s)
                             : std::nullopt;
}

QString habitAccessibleName(const Habit& habit) {
    QStringList parts{line(habit.name), habit.done ? u"done"_s : u"not done"_s};
    if (habit.target > 1)
        parts += u"%1 of %2"_s.arg(habit.count).arg(habit.target);
    if (habit.streak >= 1)
        parts += u"streak "_s + QString::number(habit.streak);
    return parts.join(u", "_s);
}

QString choreAccessibleName(const Chore& chore) {
    if (!isOverdue(chore))
        return line(chore.name) + u", "_s + overdueLabel(chore);
    const QString days = *chore.daysOverdue == 1 ? u" day overdue"_s : u" days overdue"_s;
    return line(chore.name) + u", "_s + QString::number(*chore.daysOverdue) + days;
}

QString eventAccessibleName(const BriefEvent& event, const QString& timeLabel) {
    QStringList parts{timeLabel, line(event.title), line(event.location.value_or(QString()))};
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

QString joinText(const BriefEvent& event) {
    return u"Join "_s + line(event.title);
}

QString foldToolTip(const QString& title, bool collapsed) {
    return (collapsed ? u"Expand "_s : u"Collapse "_s) + title;
}

} // namespace lumora::PanelTexts
