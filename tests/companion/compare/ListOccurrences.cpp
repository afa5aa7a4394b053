// Says when the events of calendars take place, for tests/companion/compare/compare.py: reads lines
// "FILE FROM TO ZONE" (days, the last exclusive; a file's name without blanks), and answers each
// with the time it took in milliseconds, or "no calendar", then a line "START END DAY|TIME"
// (seconds since 1970) for each occurrence, then an empty line.

#include "companion/agenda/CalendarText.h"
#include "companion/agenda/Occurrences.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QTimeZone>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;

namespace {

qint64 midnight(const QString& date, const QTimeZone& zone) {
    return QDateTime(QDate::fromString(date, Qt::ISODate), QTime(0, 0), zone).toSecsSinceEpoch();
}

QStringList occurrenceLines(const std::vector<EventRecord>& events, const QStringList& request) {
    const QTimeZone zone(request[3].toLatin1());
    const TimeSpan span{.from = midnight(request[1], zone), .to = midnight(request[2], zone)};
    QStringList lines;
    for (const Occurrence& occurrence : occurrencesIn(events, span, offsetsOf(zone))) {
        if (occurrence.event->isCancelled)
            continue;
        const QString kind = occurrence.event->start.isDate ? u"DAY"_s : u"TIME"_s;
        lines += u"%1 %2 %3"_s.arg(occurrence.start).arg(occurrence.end).arg(kind);
    }
    std::ranges::sort(lines);
    return lines;
}

void answer(QTextStream& out, const QStringList& request) {
    QFile file(request[0]);
    QElapsedTimer timer;
    timer.start();
    const auto events =
        file.open(QIODevice::ReadOnly) ? readCalendar(file.readAll(), {}) : std::nullopt;
    if (!events) {
        out << "no calendar\n\n" << Qt::flush;
        return;
    }
    const QStringList lines = occurrenceLines(*events, request);
    out << timer.elapsed() << '\n';
    for (const QString& line : lines)
        out << line << '\n';
    out << '\n' << Qt::flush;
}

} // namespace

int main() {
    QTextStream in(stdin);
    QTextStream out(stdout);
    for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
        const QStringList request = line.split(u' ');
        if (request.size() != 4)
            return 2;
        answer(out, request);
    }
    return 0;
}
