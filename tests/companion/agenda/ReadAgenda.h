#pragma once

#include "companion/agenda/CalendarText.h"
#include "companion/agenda/MergedAgenda.h"

#include <QDateTime>
#include <QTimeZone>

#include <stdexcept>

namespace lumora::companion::tests {

/// The first second of `date`, as in "2025-03-04", in `zone`.
inline qint64 midnight(const QString& date, const QTimeZone& zone) {
    return QDateTime(QDate::fromString(date, Qt::ISODate), QTime(0, 0), zone).toSecsSinceEpoch();
}

/// Some local days, and where they are.
struct Days {
    QString from = QStringLiteral("2025-03-04");
    QString to = QStringLiteral("2025-03-05"); ///< exclusive
    QByteArray zone = "UTC";
};

/// The user of all tests.
inline ReaderSettings testReader() {
    return {
        .myAddresses = {QStringLiteral("me@example.org")},
        .meetingHosts = {QStringLiteral("talk.example.org")}};
}

/// What a calendar of one text shows on `days`. Throws when it is no calendar.
inline Agenda readAgenda(const QByteArray& text, const Days& days = {}) {
    const auto events = readCalendar(text, testReader());
    if (!events)
        throw std::runtime_error("no calendar");
    const QTimeZone zone(days.zone);
    const TimeSpan span{.from = midnight(days.from, zone), .to = midnight(days.to, zone)};
    CalendarPart part{.name = QStringLiteral("Test"), .showTransparent = false, .occurrences = {}};
    part.occurrences = occurrencesIn(*events, span, offsetsOf(zone));
    return mergedAgenda({part});
}

/// A calendar whose only event has these lines.
inline QByteArray calendarOf(const QByteArray& eventLines) {
    return "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\n" + eventLines + "END:VEVENT\r\nEND:VCALENDAR\r\n";
}

} // namespace lumora::companion::tests
