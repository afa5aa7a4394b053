#include "ReadAgenda.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

std::optional<std::vector<EventRecord>> read(const QByteArray& text) {
    return readCalendar(text, testReader());
}

QByteArray nested(int depth) {
    return calendarOf(
        "DTSTART:20250304T090000Z\r\n" + QByteArray("BEGIN:VALARM\r\n").repeated(depth) +
        QByteArray("END:VALARM\r\n").repeated(depth));
}

} // namespace

TEST(CalendarText, ThatIsNoCalendarIsAbsent) {
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("<!DOCTYPE html><html>Please sign in</html>"));
    EXPECT_FALSE(read("BEGIN:VCARD\r\nFN:Somebody\r\nEND:VCARD\r\n"));
    EXPECT_TRUE(read("BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n"));
}

TEST(CalendarText, IsReadWhateverEndsItsLines) {
    for (const QByteArray& end : {QByteArray("\n"), QByteArray("\r\n")}) {
        const auto events = read(calendarOf("DTSTART:20250304T090000Z\r\n").replace("\r\n", end));
        ASSERT_TRUE(events);
        EXPECT_EQ(events->size(), 1U);
    }
}

TEST(CalendarText, LosesEventsWithoutAStartAndNoOthers) {
    const auto events =
        read("BEGIN:VCALENDAR\r\n"
             "BEGIN:VEVENT\r\nSUMMARY:No start\r\nEND:VEVENT\r\n"
             "BEGIN:VEVENT\r\nDTSTART:yesterday\r\nEND:VEVENT\r\n"
             "BEGIN:VEVENT\r\nDTSTART:20251399T090000Z\r\nEND:VEVENT\r\n"
             "BEGIN:VEVENT\r\nDTSTART:20250304T097000Z\r\nEND:VEVENT\r\n"
             "BEGIN:VTODO\r\nDTSTART:20250304T090000Z\r\nEND:VTODO\r\n"
             "BEGIN:VEVENT\r\nSUMMARY:Good\r\nDTSTART:20250304T090000Z\r\nEND:VEVENT\r\n"
             "END:VCALENDAR\r\n");
    ASSERT_TRUE(events);
    ASSERT_EQ(events->size(), 1U);
    EXPECT_EQ(events->at(0).title, u"Good"_s);
}

TEST(CalendarText, ThatIsCutOffIsAbsent) {
    const QByteArray text = calendarOf("DTSTART:20250304T090000Z\r\n");
    EXPECT_TRUE(read(text.chopped(2)));
    EXPECT_FALSE(read(text.chopped(4)));
    EXPECT_FALSE(read(text.first(text.indexOf("END:VEVENT"))));
}

TEST(CalendarText, MayLackTheEndsOfEvents) {
    const auto events = read("BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nDTSTART:20250304T090000Z\r\n"
                             "BEGIN:VALARM\r\nBEGIN:VEVENT\r\nDTSTART:20250304T100000Z\r\n"
                             "END:VCALENDAR\r\n");
    ASSERT_TRUE(events);
    EXPECT_EQ(events->size(), 2U);
}

TEST(CalendarText, MayBeMisspeltOrMissAround) {
    EXPECT_TRUE(read(calendarOf("DTSTART:20250304T090000Z\r\n").chopped(2) + "D\r\n"));
    EXPECT_TRUE(read("BEGIN:VEVENT\r\nDTSTART:20250304T090000Z\r\nEND:VEVENT\r\n"));
    EXPECT_FALSE(read("BEGIN:VEVENT\r\nDTSTART:20250304T090000Z\r\n"));
}

TEST(CalendarText, IsUnfolded) {
    const Agenda agenda =
        readAgenda(calendarOf("DTSTART:20250304\r\n T090000Z\r\nSUMM\r\n\tARY:On\r\n e\r\n"));
    ASSERT_EQ(agenda.size(), 1U);
    EXPECT_EQ(agenda[0].title, u"One"_s);
}

TEST(CalendarText, IsTakenUpToABound) {
    QByteArray text = calendarOf("DTSTART:20250304T090000Z\r\n");
    text.append(longestCalendarText - text.size(), '\n');
    EXPECT_TRUE(read(text));
    EXPECT_FALSE(read(text + '\n'));
}

TEST(CalendarText, IsNotFollowedIntoTheDepth) {
    EXPECT_TRUE(read(nested(7)));
    EXPECT_FALSE(read(nested(8)));
    EXPECT_FALSE(read(nested(300'000)));
}

TEST(CalendarText, GivesTitleAndPlaceUpToABound) {
    const Agenda agenda = readAgenda(calendarOf(
        "DTSTART:20250304T090000Z\r\nSUMMARY:Caf\xC3\xA9\\, " + QByteArray(2'000, 'x') +
        "\r\nLOCATION: Hauptstr. 12\\nBerlin \r\n"));
    ASSERT_EQ(agenda.size(), 1U);
    EXPECT_EQ(agenda[0].title, u"Café, "_s + QString(994, u'x'));
    EXPECT_EQ(agenda[0].location, u"Hauptstr. 12\nBerlin"_s);
}

TEST(CalendarText, WithoutTitleAndPlaceGivesNone) {
    const Agenda agenda = readAgenda(calendarOf("DTSTART:20250304T090000Z\r\nLOCATION: \r\n"));
    ASSERT_EQ(agenda.size(), 1U);
    EXPECT_EQ(agenda[0].title, QString());
    EXPECT_EQ(agenda[0].location, std::nullopt);
}

} // namespace lumora::companion::tests
