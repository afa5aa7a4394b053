#include "briefing/BriefingDecoder.h"
#include "support/Builders.h"
#include "support/Fixtures.h"
#include "texts/AgendaText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

Briefing dayWithEverything() {
    Briefing briefing = makeBriefing(
        {makeEvent(
             {.title = u"Over"_s,
              .start = at("2025-03-04T08:00:00Z"),
              .end = at("2025-03-04T08:30:00Z")}),
         makeEvent(
             {.title = u"Stand\x1b[2Jup"_s,
              .start = at("2025-03-04T09:30:00Z"),
              .end = at("2025-03-04T10:00:00Z"),
              .location = u"Room 4"_s,
              .meetingUrl = u"https://meet.example/secret-room"_s}),
         makeEvent({.title = u"Away"_s, .allDay = true, .meetingUrl = u"file:///etc/passwd"_s})});
    briefing.habits = {
        1, 2, {{u"h1"_s, u"Read"_s, true, 1, 1, 4}, {u"h2"_s, u"Drink"_s, false, 2, 8, 0}}};
    briefing.chores = {7, {{u"c1"_s, u"Water plants"_s, u"Kitchen"_s, 3}}};
    briefing.focus.productiveShare = 0.42;
    briefing.spending = Spending();
    briefing.spending->mtd = 1234.5;
    return briefing;
}

Agenda agenda() {
    return Agenda::of(dayWithEverything(), at("2025-03-04T09:00:00Z"), LinkPolicy());
}

} // namespace

TEST(Agenda, IsWhatIsLeftOfTheDay) {
    const QString text = agendaText(agenda(), QTimeZone::utc(), QLocale::c());
    EXPECT_EQ(
        text, u"Events: 2 left\n"
              "  9:30 am · Stand [2Jup · Room 4 · join\n"
              "  all-day · Away\n"
              "Habits: 1/2 done\n"
              "  [ ] Drink · 2/8\n"
              "  [x] Read · 4🔥\n"
              "Chores: 7 due\n"
              "  Water plants · Kitchen · 3d over\n"
              "Focus: 42%\n"_s);
}

TEST(Agenda, TellsProgramsNeitherLinksNorAmounts) {
    const QByteArray json = agenda().toJson();
    EXPECT_FALSE(json.contains("secret-room"));
    EXPECT_FALSE(json.contains("1234"));
    EXPECT_FALSE(json.contains('\n'));
    EXPECT_FALSE(json.contains('\x1b'));
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    EXPECT_EQ(
        object.keys(), (QStringList{u"chores"_s, u"date"_s, u"events"_s, u"focus"_s, u"habits"_s}));
    EXPECT_EQ(
        object.value(u"events"_s).toArray().first().toObject(),
        QJsonDocument::fromJson(R"({"title":"Stand\u001b[2Jup","start":"2025-03-04T09:30:00Z",)"
                                R"("end":"2025-03-04T10:00:00Z","allDay":false,)"
                                R"("location":"Room 4","canJoin":true})")
            .object());
}

TEST(Agenda, ReadsTheSameAgain) {
    EXPECT_EQ(Agenda::fromJson(agenda().toJson()), agenda());
    Agenda sparse = agenda();
    sparse.focus.reset();
    sparse.chores.top.front().daysOverdue.reset();
    sparse.events.front().start.reset();
    sparse.events.front().location.reset();
    EXPECT_EQ(Agenda::fromJson(sparse.toJson()), sparse);
    EXPECT_FALSE(Agenda::fromJson("[]"));
    EXPECT_EQ(Agenda::fromJson("{}"), Agenda());
}

TEST(Agenda, HasAsManyRowsAsThePanel) {
    Briefing briefing = makeBriefing(std::vector(1500, makeEvent({})));
    briefing.habits.items.resize(1500);
    briefing.chores.top.resize(1500);
    const Agenda large = Agenda::of(briefing, at("2025-03-04T09:00:00Z"), LinkPolicy());
    EXPECT_EQ(large.events.size(), 1000U);
    EXPECT_EQ(large.habits.items.size(), 1000U);
    EXPECT_EQ(large.chores.top.size(), 1000U);
}

TEST(Agenda, ListsTheIdsThatCanBeWritten) {
    Agenda some = agenda();
    some.habits.items.push_back({.id = u"two\nlines"_s, .name = u"x"_s});
    some.habits.items.push_back({.id = {}, .name = u"y"_s});
    EXPECT_EQ(habitList(some), u"h1\tRead\nh2\tDrink\n"_s);
    EXPECT_EQ(choreList(some), u"c1\tWater plants\n"_s);
}
