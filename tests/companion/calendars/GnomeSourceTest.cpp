#include "CalendarWorld.h"
#include "RealEvolutionServer.h"
#include "companion/calendars/EvolutionCalendar.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using lumora::tests::PrivateBus;

constexpr char series[] = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Lumora//Tests//EN\r\n"
                          "BEGIN:VEVENT\r\nUID:s\r\nDTSTAMP:20250101T000000Z\r\n"
                          "SUMMARY:Standup\r\nDTSTART:20250203T083000Z\r\nDURATION:PT15M\r\n"
                          "RRULE:FREQ=DAILY\r\nEND:VEVENT\r\n"
                          "BEGIN:VEVENT\r\nUID:s\r\nDTSTAMP:20250101T000000Z\r\n"
                          "RECURRENCE-ID:20250304T083000Z\r\nSUMMARY:Late standup\r\n"
                          "DTSTART:20250304T093000Z\r\nDURATION:PT15M\r\nEND:VEVENT\r\n"
                          "BEGIN:VEVENT\r\nUID:o\r\nDTSTAMP:20250101T000000Z\r\n"
                          "SUMMARY:Long over\r\nDTSTART:20240304T093000Z\r\nEND:VEVENT\r\n"
                          "END:VCALENDAR\r\n";

QByteArray keyFile(const QByteArray& name, const QByteArray& more = {}) {
    return "[Data Source]\nDisplayName=" + name +
           "\nEnabled=true\nParent=local-stub\n\n[Calendar]\nBackendName=local\nSelected=true\n" +
           more;
}

} // namespace

TEST(EvolutionCalendar, IsASourceThatTheUserShows) {
    const auto name = [](const QString& text) {
        const auto calendar = evolutionCalendar(u"uid"_s, text);
        return calendar ? calendar->name.toStdString() : std::string("none");
    };
    const QString head = u"[Data Source]\nDisplayName=Work\n"_s;
    const QString calendar = u"[Calendar]\nBackendName=caldav\n"_s;
    EXPECT_EQ(name(head + calendar), "Work");
    EXPECT_EQ(name(u"# [Calendar]\n"_s + head), "none");
    EXPECT_EQ(name(head + u"[Address Book]\nBackendName=local\n"_s), "none");
    EXPECT_EQ(name(head + u"Enabled=false\n"_s + calendar), "none");
    EXPECT_EQ(name(head + u"Enabled=true\n"_s + calendar + u"Selected=true\n"_s), "Work");
    EXPECT_EQ(name(head + calendar + u"Selected=false\n"_s), "none");
    EXPECT_EQ(name(head + u"[Calendar]\nBackendName=weather\n"_s), "none");
    EXPECT_EQ(name(head + u"[Calendar]\nBackendName=\n"_s), "none");
    EXPECT_EQ(name(calendar), "uid");
    EXPECT_EQ(evolutionCalendar({}, head + calendar), std::nullopt);
}

TEST(EvolutionNames, AreThoseOfTheNewestRelease) {
    const QString stem = u"a.Calendar"_s;
    EXPECT_EQ(newestName({}, stem), QString());
    EXPECT_EQ(
        newestName({u"a.Calendar8"_s, u"a.Calendar10"_s, u"a.Calendar9"_s}, stem),
        u"a.Calendar10"_s);
    EXPECT_EQ(newestName({u"a.Calendar"_s, u"a.CalendarX"_s, u"b.Calendar8"_s}, stem), QString());
}

TEST(GnomeSource, SaysWhereThereIsNoServer) {
    PrivateBus bus;
    CalendarWorld world(bus.connect());
    world.calendars = {{.name = u"Desktop"_s, .place = GnomeCalendars{}}};
    world.start();
    world.refresh();
    EXPECT_EQ(world.state().error, u"The Evolution Data Server is not installed"_s);
}

TEST(GnomeSource, SaysWhereThereIsNoBus) {
    CalendarWorld world;
    world.calendars = {{.name = u"Desktop"_s, .place = GnomeCalendars{}}};
    world.start();
    world.refresh();
    EXPECT_EQ(world.state().error, u"There is no session bus"_s);
}

TEST(GnomeSource, ShowsTheCalendarsOfTheDesktop) {
    if (!RealEvolutionServer::isInstalled())
        GTEST_SKIP() << "evolution-data-server is not installed";
    PrivateBus bus;
    RealEvolutionServer server(bus);
    server.setOwnCalendar(series);
    server.addCalendar(u"mine"_s, keyFile("Mine"), calendarWith({"Dentist"}));
    server.addCalendar(
        u"off"_s, keyFile("Off").replace("Enabled=true", "Enabled=false"), calendarWith({"Off"}));
    server.start();
    CalendarWorld world(bus.connect());
    world.calendars = {{.name = u"Desktop"_s, .place = GnomeCalendars{}}};
    world.start();
    world.refresh();
    EXPECT_EQ(world.state().error, std::nullopt);
    EXPECT_EQ(world.shown(), QStringList({u"Personal: Late standup"_s, u"Mine: Dentist"_s}));
    EXPECT_EQ(world.state().eventsToday, 2);

    // Tomorrow is known already, and what was read stays when the server is gone.
    world.now += std::chrono::hours(24);
    EXPECT_EQ(world.shown(), QStringList(u"Personal: Standup"_s));
    server.kill();
    world.refresh();
    EXPECT_TRUE(world.state().error.has_value());
    EXPECT_EQ(world.shown(), QStringList(u"Personal: Standup"_s));
    server.start();
    world.now += std::chrono::minutes(15);
    world.refresh();
    EXPECT_EQ(world.state().error, std::nullopt);
    EXPECT_EQ(world.shown(), QStringList(u"Personal: Standup"_s));
}

} // namespace lumora::companion::tests
