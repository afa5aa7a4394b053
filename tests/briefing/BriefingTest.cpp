#include "briefing/Briefing.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QString idAt(std::string_view start) {
    return makeEvent({.title = u"T"_s, .start = at(start)}).id();
}

} // namespace

TEST(BriefEvent, IdIsTitleAndStartInSeconds) {
    EXPECT_EQ(
        makeEvent({.title = u"Standup"_s, .start = at("2025-03-04T09:30:00Z")}).id(),
        u"Standup|1741080600.0"_s);
}

TEST(BriefEvent, IdWithoutAStartEndsInZero) {
    EXPECT_EQ(makeEvent({.title = u"Title"_s}).id(), u"Title|0.0"_s);
}

TEST(BriefEvent, IdPrintsTheShortestFraction) {
    EXPECT_EQ(idAt("2025-03-04T09:30:00.25Z"), u"T|1741080600.25"_s);
    EXPECT_EQ(idAt("2025-03-04T09:30:00.1Z"), u"T|1741080600.1"_s);
    EXPECT_EQ(idAt("2025-03-04T09:30:00.123456Z"), u"T|1741080600.123456"_s);
}

TEST(BriefEvent, IdHasNeverAnExponent) {
    EXPECT_EQ(idAt("1970-01-01T00:00:00Z"), u"T|0.0"_s);
    EXPECT_EQ(idAt("1970-01-01T00:00:00.000001Z"), u"T|0.000001"_s);
    EXPECT_EQ(idAt("1969-12-31T23:59:59.5Z"), u"T|-0.5"_s);
    EXPECT_EQ(idAt("2001-09-09T01:46:40Z"), u"T|1000000000.0"_s);
    EXPECT_EQ(idAt("9999-12-31T23:59:59Z"), u"T|253402300799.0"_s);
    EXPECT_EQ(idAt("0000-01-01T00:00:00Z"), u"T|-62167219200.0"_s);
}

TEST(BriefEvent, EqualTitleAndStartShareAnIdentity) {
    const auto start = at("2025-03-04T09:30:00Z");
    EXPECT_EQ(
        makeEvent({.start = start, .location = u"A"_s}).id(),
        makeEvent({.start = start, .allDay = true}).id());
}

TEST(Habits, RemainingComeFirstEachInListOrder) {
    Habits habits;
    for (const auto& [name, done] :
         {std::pair(u"A"_s, true), {u"B"_s, false}, {u"C"_s, true}, {u"D"_s, false}})
        habits.items.push_back({.id = name, .name = name, .done = done});
    QString order;
    for (const Habit& habit : habits.byRemaining())
        order += habit.name;
    EXPECT_EQ(order, u"BDAC"_s);
}

TEST(Habits, NothingRemainsOfNothing) {
    EXPECT_TRUE(Habits().byRemaining().empty());
}
