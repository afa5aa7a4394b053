#pragma once

#include "companion/calendars/Calendars.h"
#include "companion/fetching/CurlWeb.h"
#include "support/Patience.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <stdexcept>

namespace lumora::companion::tests {

/// A morning in Berlin: 09:00 on 4 March 2025.
inline constexpr std::chrono::sys_seconds morning{std::chrono::seconds(1'741'075'200)};

/// Runs the event loop until `isDone`; throws when the patience is over.
inline void await(const std::function<bool()>& isDone) {
    if (!QTest::qWaitFor(isDone, lumora::tests::patience))
        throw std::runtime_error("it did not happen");
}

/// A calendar with one event of an hour on 4 March 2025 at `hour` UTC, for each of `titles`.
inline QByteArray calendarWith(const QByteArrayList& titles, int hour = 10) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
    for (const QByteArray& title : titles) {
        text += "BEGIN:VEVENT\r\nUID:" + title + "\r\nSUMMARY:" + title + "\r\nDTSTART:20250304T" +
                QByteArray::number(hour).rightJustified(2, '0') + "0000Z\r\nDURATION:PT1H\r\n" +
                "END:VEVENT\r\n";
        ++hour;
    }
    return text + "END:VCALENDAR\r\n";
}

/// Calendars of a configuration, with a clock that the test moves.
class CalendarWorld {
public:
    CalendarWorld()
        : bus(QStringLiteral("none")) {}

    explicit CalendarWorld(QDBusConnection at)
        : bus(std::move(at)) {}

    /// Begins anew, as a start of the program does.
    Calendars& start() {
        AgendaSettings settings{
            .calendars = calendars,
            .myAddresses = {},
            .meetingHosts = {},
            .refresh = std::chrono::minutes(15),
            .cacheFolder = path(QStringLiteral("cache/calendars"))};
        running = std::make_unique<Calendars>(
            std::move(settings), CalendarSurroundings{
                                     .web = *web,
                                     .now = [this] { return now; },
                                     .zone = [this] { return zone; },
                                     .bus = bus});
        return *running;
    }

    /// Fetches what is due and waits for it.
    void refresh() {
        running->refreshDue();
        await([this] { return !running->isRefreshing(); });
    }

    /// The titles of today, with the calendar's name in front.
    QStringList shown() {
        QStringList titles;
        for (const AgendaEvent& event : running->today(now))
            titles += event.calendar + QStringLiteral(": ") + event.title;
        return titles;
    }

    CalendarState state() { return running->states(now).at(0); }

    QString path(const QString& name) const { return folder.filePath(name); }

    /// Puts a file with these bytes in the place of what is there, at once.
    void put(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name) + QStringLiteral(".tmp"));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("not written");
        file.close();
        QFile::remove(path(name));
        if (!file.rename(path(name)))
            throw std::runtime_error("not renamed");
    }

    QTemporaryDir folder;
    std::chrono::sys_seconds now = morning;
    QTimeZone zone{"Europe/Berlin"};
    QDBusConnection bus;
    std::vector<CalendarSettings> calendars;
    std::unique_ptr<Web> web = std::make_unique<CurlWeb>();
    std::unique_ptr<Calendars> running;
};

} // namespace lumora::companion::tests
