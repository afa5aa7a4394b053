#include "companion/program/CheckReport.h"

#include "linux/files/WholeFile.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

QString counted(qint64 count, const QString& one, const QString& many) {
    return count == 1 ? u"1 "_s + one : u"%1 %2"_s.arg(count).arg(many);
}

void addLine(CheckReport& report, const QString& name, const QString& what) {
    report.text += name + u": "_s + what + u'\n';
}

/// "read 3 minutes ago", and what has gone wrong since.
QString standing(
    CheckReport& report, const std::optional<std::chrono::sys_seconds>& readAt,
    const std::optional<QString>& error, std::chrono::sys_seconds now) {
    QStringList parts;
    if (readAt)
        parts += u"read %1 ago"_s.arg(ageText(now - *readAt));
    else
        parts += u"not read yet"_s;
    if (error) {
        parts += *error;
        report.isFine = false;
    }
    return parts.join(u"; "_s);
}

void addCalendars(CheckReport& report, Sources& sources) {
    for (const CalendarState& calendar : sources.calendarStates()) {
        const QString events = counted(calendar.eventsToday, u"event today"_s, u"events today"_s);
        addLine(
            report, calendar.name,
            events + u"; "_s + standing(report, calendar.readAt, calendar.error, sources.now()));
    }
}

void addLog(CheckReport& report, Sources& sources, const BriefingParts& parts) {
    const ServiceSettings& settings = sources.settings();
    if (!settings.habits.empty())
        addLine(
            report, u"Habits"_s,
            u"%1 of %2 done today"_s.arg(parts.habits.done).arg(parts.habits.total));
    if (!settings.chores.empty())
        addLine(report, u"Chores"_s, counted(parts.chores.count, u"due"_s, u"due"_s));
    const QString name = pathForPeople(settings.logPath);
    if (const auto error = sources.log().error()) {
        addLine(report, u"Log"_s, *error);
        report.isFine = false;
    } else if (const qsizetype skipped = sources.log().skipped(); skipped > 0) {
        addLine(
            report, u"Log"_s,
            u"%1: %2 skipped"_s.arg(name, counted(skipped, u"line"_s, u"lines"_s)));
    }
}

} // namespace

CheckReport checkReport(Sources& sources) {
    CheckReport report;
    const BriefingParts parts = sources.parts();
    addCalendars(report, sources);
    addLog(report, sources, parts);
    for (const NamedState& source : sources.states())
        addLine(
            report, source.name,
            standing(report, source.state.readAt, source.state.error, sources.now()));
    if (sources.inbox().isThere())
        addLine(report, u"Inbox"_s, u"set up"_s);
    if (report.text.isEmpty())
        report.text = u"No source is set up yet\n"_s;
    return report;
}

QString ageText(std::chrono::seconds age) {
    using namespace std::chrono_literals;
    if (age < 1min)
        return u"less than a minute"_s;
    if (age < 1h)
        return counted(age / 1min, u"minute"_s, u"minutes"_s);
    if (age < 48h)
        return counted(age / 1h, u"hour"_s, u"hours"_s);
    return counted(age / 24h, u"day"_s, u"days"_s);
}

} // namespace lumora::companion
