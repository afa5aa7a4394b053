#include "companion/agenda/MergedAgenda.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

EventRecord meeting(const QByteArray& uid, const QString& title) {
    EventRecord event;
    event.uid = uid;
    event.title = title;
    return event;
}

EventRecord wholeDay(const QString& title) {
    EventRecord event = meeting({}, title);
    event.start.isDate = true;
    return event;
}

CalendarPart part(const QString& name, std::vector<Occurrence> occurrences) {
    return {.name = name, .showTransparent = false, .occurrences = std::move(occurrences)};
}

QStringList shown(const std::vector<CalendarPart>& parts) {
    QStringList lines;
    for (const AgendaEvent& event : mergedAgenda(parts))
        lines += event.calendar + u": "_s + event.title;
    return lines;
}

} // namespace

TEST(MergedAgenda, IsInTheOrderOfTheDay) {
    const EventRecord late = meeting("a", u"late"_s);
    const EventRecord early = meeting("b", u"early"_s);
    const EventRecord whole = wholeDay(u"whole"_s);
    EXPECT_EQ(
        shown(
            {part(u"One"_s, {{&late, 300, 400}}),
             part(u"Two"_s, {{&early, 100, 300}, {&early, 100, 200}, {&whole, 200, 900}})}),
        QStringList({u"Two: whole"_s, u"Two: early"_s, u"Two: early"_s, u"One: late"_s}));
}

TEST(MergedAgenda, HoldsAMeetingOfTwoCalendarsOnce) {
    const EventRecord here = meeting("a", u"mine"_s);
    const EventRecord there = meeting("a", u"theirs"_s);
    EXPECT_EQ(
        shown({part(u"One"_s, {{&here, 100, 200}}), part(u"Two"_s, {{&there, 100, 200}})}),
        QStringList(u"One: mine"_s));
    EXPECT_EQ(
        shown({part(u"One"_s, {{&here, 100, 200}}), part(u"Two"_s, {{&there, 101, 200}})}).size(),
        2);
}

TEST(MergedAgenda, HoldsWhatHasNoIdentifierEachTime) {
    const EventRecord one = meeting({}, u"one"_s);
    EXPECT_EQ(
        shown({part(u"One"_s, {{&one, 100, 200}}), part(u"Two"_s, {{&one, 100, 200}})}).size(), 2);
}

TEST(MergedAgenda, HoldsTwoDatesOfOneCalendarAtTheSameTime) {
    const EventRecord one = meeting("a", u"one"_s);
    const EventRecord moved = meeting("a", u"moved"_s);
    EXPECT_EQ(shown({part(u"One"_s, {{&one, 100, 200}, {&moved, 100, 200}})}).size(), 2);
}

TEST(MergedAgenda, DoesNotHideWhatIsLeftOutElsewhere) {
    EventRecord declined = meeting("a", u"declined"_s);
    declined.isDeclined = true;
    const EventRecord shared = meeting("a", u"shared"_s);
    EXPECT_EQ(
        shown({part(u"One"_s, {{&declined, 100, 200}}), part(u"Two"_s, {{&shared, 100, 200}})}),
        QStringList(u"Two: shared"_s));
}

TEST(MergedAgenda, HoldsWhatTakesNoTimeWhereThatIsAskedFor) {
    EventRecord transparent = meeting("a", u"a"_s);
    transparent.isTransparent = true;
    CalendarPart calendar = part(u"One"_s, {{&transparent, 100, 200}});
    EXPECT_TRUE(shown({calendar}).isEmpty());
    calendar.showTransparent = true;
    EXPECT_EQ(shown({calendar}).size(), 1);
}

} // namespace lumora::companion::tests
