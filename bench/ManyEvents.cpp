#include "ManyEvents.h"

namespace lumora {

namespace {

QByteArray eventOf(int i, QDate day) {
    static const char* const rules[] = {
        "FREQ=DAILY", "FREQ=WEEKLY;BYDAY=MO,WE,FR", "FREQ=MONTHLY;BYDAY=2TU",
        "FREQ=WEEKLY;INTERVAL=2", "FREQ=YEARLY"};
    static const char* const zones[] = {"Europe/Berlin", "America/New_York", "Asia/Kolkata"};
    const QByteArray number = QByteArray::number(i);
    const bool repeats = i % 5 == 0;
    const QDate date = day.addDays(repeats ? -(i * 37 % 3'285) : i * 37 % 730 - 365);
    const QByteArray hour = QByteArray::number(8 + i % 10).rightJustified(2, '0');
    QByteArray event = "BEGIN:VEVENT\r\nUID:event-" + number +
                       "@example.org\r\nDTSTAMP:20250101T000000Z\r\nDTSTART;TZID=" + zones[i % 3] +
                       ':' + date.toString(Qt::ISODate).remove(u'-').toLatin1() + 'T' + hour +
                       "0000\r\nDURATION:PT45M\r\nSUMMARY:Meeting number " + number +
                       "\r\nLOCATION:Room " + number + "\\, second floor\r\nDESCRIPTION:" +
                       QByteArray("What there is to talk about. ").repeated(3) + "\r\n";
    if (repeats)
        event += QByteArray("RRULE:") + rules[i / 5 % 5] + "\r\n";
    return event + "END:VEVENT\r\n";
}

} // namespace

QByteArray manyEvents(int count, QDate day) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Lumora//Bench//EN\r\n";
    for (int i = 0; i < count; ++i)
        text += eventOf(i, day);
    return text + "END:VCALENDAR\r\n";
}

} // namespace lumora
