#include "companion/calendars/Calendars.h"

#include "CalendarWorld.h"
#include "support/ScopedEnvironment.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QSslServer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using lumora::tests::header;
using lumora::tests::ScopedEnvironment;
using lumora::tests::ScriptedServer;
using lumora::tests::TestCertificates;
using std::chrono::hours;
using std::chrono::minutes;

qint64 utc(const QString& text) {
    return QDateTime::fromString(text, Qt::ISODate).toSecsSinceEpoch();
}

/// An HTTPS server with one calendar, which it hands out only to those who do not have it yet. It
/// can be ended, and begun again at the same port.
class CalendarServer {
public:
    explicit CalendarServer(const TestCertificates& certificates)
        : m_certificates(certificates) {
        begin();
    }

    void begin() {
        auto listener = std::make_unique<QSslServer>();
        listener->setSslConfiguration(m_certificates.serverConfiguration());
        m_server = std::make_unique<ScriptedServer>(
            [this](QTcpSocket& connection, const QByteArray& request) {
                const bool isKnown = header(request, "If-None-Match") == etag;
                statuses += isKnown ? 304 : 200;
                connection.write(
                    isKnown ? "HTTP/1.1 304 Not Modified\r\nConnection: close\r\n\r\n"
                            : ScriptedServer::answer("200 OK", body, "ETag: " + etag + "\r\n"));
                connection.disconnectFromHost();
            },
            std::move(listener), m_port);
        m_port = m_server->port();
    }

    void end() { m_server.reset(); }

    QUrl url() const { return QUrl(u"webcal://127.0.0.1:%1/secret/basic.ics"_s.arg(m_port)); }

    QByteArray body;
    QByteArray etag;
    QList<int> statuses;

private:
    const TestCertificates& m_certificates;
    quint16 m_port = 0;
    std::unique_ptr<ScriptedServer> m_server;
};

} // namespace

TEST(LocalDay, LastsFromMidnightToMidnight) {
    const auto day = [](const QString& now, const char* zone) {
        const TimeSpan span = Calendars::localDay(
            std::chrono::sys_seconds(std::chrono::seconds(utc(now))), QTimeZone(zone));
        return std::pair(span.from, span.to);
    };
    EXPECT_EQ(
        day(u"2025-03-04T22:59:59Z"_s, "Europe/Berlin"),
        std::pair(utc(u"2025-03-03T23:00:00Z"_s), utc(u"2025-03-04T23:00:00Z"_s)));
    EXPECT_EQ(
        day(u"2025-03-04T23:00:00Z"_s, "Europe/Berlin"),
        std::pair(utc(u"2025-03-04T23:00:00Z"_s), utc(u"2025-03-05T23:00:00Z"_s)));
    EXPECT_EQ(
        day(u"2025-03-30T12:00:00Z"_s, "Europe/Berlin"),
        std::pair(utc(u"2025-03-29T23:00:00Z"_s), utc(u"2025-03-30T22:00:00Z"_s)));
    EXPECT_EQ(
        day(u"1969-12-31T12:00:00Z"_s, "UTC"),
        std::pair(utc(u"1969-12-31T00:00:00Z"_s), utc(u"1970-01-01T00:00:00Z"_s)));
}

TEST(Calendars, FollowTheDayAndTheZone) {
    CalendarWorld world;
    world.put(
        u"a.ics"_s, "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nSUMMARY:Early\r\n"
                    "DTSTART:20250305T010000Z\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    world.calendars = {{.name = u"A"_s, .place = IcsFile{world.path(u"a.ics"_s)}}};
    world.start();
    EXPECT_EQ(world.shown(), QStringList());
    world.now += hours(24);
    EXPECT_EQ(world.shown(), QStringList(u"A: Early"_s));
    world.now -= hours(24);
    EXPECT_EQ(world.shown(), QStringList());
    world.zone = QTimeZone("Asia/Tokyo"); // 17:00 of the fourth there
    world.now += hours(8);
    EXPECT_EQ(world.shown(), QStringList(u"A: Early"_s));
}

TEST(Calendars, TellHowManyEventsEachHasAndThatTheyChange) {
    CalendarWorld world;
    world.put(u"a.ics"_s, calendarWith({"One", "Shared"}));
    world.put(u"b.ics"_s, calendarWith({"Two", "Shared"}));
    world.calendars = {
        {.name = u"A"_s, .place = IcsFile{world.path(u"a.ics"_s)}},
        {.name = u"B"_s, .place = IcsFile{world.path(u"b.ics"_s)}}};
    Calendars& calendars = world.start();
    EXPECT_EQ(world.shown(), QStringList({u"A: One"_s, u"B: Two"_s, u"A: Shared"_s}));
    const auto states = calendars.states(world.now);
    ASSERT_EQ(states.size(), 2U);
    EXPECT_EQ(states[0].eventsToday, 2);
    EXPECT_EQ(states[1].eventsToday, 1);
    QSignalSpy changed(&calendars, &Calendars::changed);
    world.put(u"a.ics"_s, calendarWith({"One"}));
    await([&changed] { return !changed.isEmpty(); });
    EXPECT_EQ(calendars.states(world.now)[1].eventsToday, 2) << "the shared one is its own now";
}

TEST(Calendars, SurviveAServerThatDiesAndComesBack) {
    const TestCertificates certificates;
    const ScopedEnvironment trusted("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    CalendarServer server(certificates);
    server.body = calendarWith({"Standup"});
    server.etag = "\"1\"";
    CalendarWorld world;
    world.put(u"b.ics"_s, calendarWith({"Two"}, 12));
    world.calendars = {
        {.name = u"Work"_s, .place = IcsAddress{server.url()}},
        {.name = u"B"_s, .place = IcsFile{world.path(u"b.ics"_s)}}};
    world.start();
    const QStringList both{u"Work: Standup"_s, u"B: Two"_s};
    world.refresh();
    EXPECT_EQ(world.shown(), both);
    world.now += minutes(15);
    world.refresh();
    EXPECT_EQ(server.statuses, QList<int>({200, 304}));

    server.end();
    world.now += minutes(15);
    world.refresh();
    EXPECT_EQ(world.shown(), both);
    EXPECT_EQ(world.state().error, u"The server could not be reached"_s);
    world.start(); // and so is the program begun anew
    EXPECT_EQ(world.shown(), both);
    world.refresh();
    world.now += hours(3);
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList(u"Work: Work: not updated for 3 hours"_s) + both);

    server.begin();
    world.now += minutes(15);
    world.refresh();
    EXPECT_EQ(world.shown(), both);
    EXPECT_EQ(server.statuses.last(), 304) << "what was kept on disk is still good";
    server.body = calendarWith({"Retro"});
    server.etag = "\"2\"";
    world.now += minutes(15);
    world.refresh();
    EXPECT_EQ(world.shown(), QStringList({u"Work: Retro"_s, u"B: Two"_s}));
    EXPECT_EQ(world.state().error, std::nullopt);
}

} // namespace lumora::companion::tests
