// What a briefing's JSON means: values, numbers, dates, absent members, texts.

#include "briefing/BriefingDecoder.h"

#include "support/Builders.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using Result = tl::expected<Briefing, DecodeError>;

/// The minimal briefing with `members` (JSON, ending in a comma) in front of its own.
QByteArray minimalWith(const QByteArray& members) {
    return fixture(u"briefing-minimal.json"_s).replace(0, 1, '{' + members);
}

/// The minimal briefing with `json` in place of its chores' count.
Result withCount(const QByteArray& json) {
    return decodeBriefing(
        fixture(u"briefing-minimal.json"_s).replace(R"("count": 0)", R"("count": )" + json));
}

/// The minimal briefing with `json` in place of its time stamp.
Result withGeneratedAt(const QByteArray& json) {
    return decodeBriefing(fixture(u"briefing-minimal.json"_s).replace("1741080600", json));
}

/// The minimal briefing with `json` as its next event's start.
Result withStart(const QByteArray& json) {
    return decodeBriefing(
        minimalWith(R"("nextEvent": {"title": "T", "allDay": false, "start": )" + json + "},"));
}

QString titleOf(const QByteArray& json) {
    const auto result =
        decodeBriefing(minimalWith(R"("nextEvent": {"allDay": false, "title": )" + json + "},"));
    return result ? result->nextEvent->title : u"error: "_s + result.error().text();
}

} // namespace

TEST(BriefingDecoder, MinimalBriefing) {
    const auto briefing = decodeBriefing(fixture(u"briefing-minimal.json"_s));
    ASSERT_TRUE(briefing) << briefing.error().text().toStdString();
    Briefing expected;
    expected.date = u"2025-03-04"_s;
    expected.generatedAt = 1741080600;
    EXPECT_EQ(*briefing, expected);
}

TEST(BriefingDecoder, FullBriefing) {
    const auto briefing = decodeBriefing(fixture(u"briefing-full.json"_s));
    ASSERT_TRUE(briefing) << briefing.error().text().toStdString();

    Briefing expected;
    expected.date = u"2025-03-04"_s;
    expected.generatedAt = 1741080600.25;
    expected.eventsToday = {
        makeEvent(
            {.title = u"Standup"_s,
             .start = at("2025-03-04T09:30:00Z"),
             .end = at("2025-03-04T09:45:00.25Z"),
             .location = u"Room 4"_s,
             .feed = u"Work"_s,
             .meetingUrl = u"https://meet.example.com/j/1"_s}),
        makeEvent(
            {.title = u"Zoë’s birthday 🎂"_s,
             .start = at("2025-03-04T00:00:00Z"),
             .end = at("2025-03-05T00:00:00Z"),
             .allDay = true,
             .location = u"Home"_s,
             .feed = u"Family"_s,
             .meetingUrl = u"https://meet.example.com/j/2"_s}),
    };
    expected.nextEvent = expected.eventsToday[0];
    expected.chores = {
        9,
        {{u"c1"_s, u"Water the plants"_s, u"Living room"_s, 2},
         {u"c2"_s, u"Clean the oven"_s, u"Kitchen"_s, -1}}};
    expected.habits = {
        1, 3, {{u"h1"_s, u"Read"_s, true, 1, 1, 5}, {u"h2"_s, u"Walk"_s, false, 2, 4, 0}}};
    expected.focus = {0.42};
    expected.spending = {
        1234.56,
        1100,
        0.12,
        {{u"food"_s, u"Groceries"_s, u"🛒"_s, u"#1E90FF"_s, 410.5},
         {u"fun"_s, u"Going out"_s, u"🍿"_s, u"nonsense"_s, -12}},
        u"2025-03-04"_s,
        1741080000,
        true};
    EXPECT_EQ(*briefing, expected);
}

TEST(BriefingDecoder, AbsentMembersStayAbsent) {
    const auto briefing = decodeBriefing(minimalWith(
        R"("spending": null, "nextEvent": {"title": "T", "allDay": false, "start": null},)"));
    ASSERT_TRUE(briefing);
    EXPECT_EQ(briefing->spending, std::nullopt);
    EXPECT_EQ(briefing->nextEvent, makeEvent({.title = u"T"_s}));
    EXPECT_EQ(briefing->focus.productiveShare, std::nullopt);
}

TEST(BriefingDecoder, IntegersHaveAll64Bits) {
    for (const qint64 value :
         {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(), qint64(0)})
        EXPECT_EQ(withCount(QByteArray::number(value)).value().chores.count, value);
}

TEST(BriefingDecoder, WholeNumbersCountAsIntegersHoweverWritten) {
    EXPECT_EQ(withCount("2.0").value().chores.count, 2);
    EXPECT_EQ(withCount("-0.0").value().chores.count, 0);
    EXPECT_EQ(withCount("-0").value().chores.count, 0);
    EXPECT_EQ(withCount("1e3").value().chores.count, 1000);
    EXPECT_EQ(withCount("-2.5E+1").value().chores.count, -25);
    EXPECT_EQ(withCount("1e18").value().chores.count, 1'000'000'000'000'000'000);
}

TEST(BriefingDecoder, OtherNumbersAreNoIntegers) {
    const QString path = u"chores.count"_s;
    EXPECT_EQ(withCount("2.5").error(), (DecodeError{path, u"Expected an integer, found 2.5"_s}));
    for (const char* json :
         {"9223372036854775808", "18446744073709551615", "18446744073709551616",
          "-9223372036854775809", "99999999999999999999999", "9223372036854775808.0",
          "-9223372036854775808.0", "1e300"})
        EXPECT_EQ(withCount(json).error(), (DecodeError{path, u"Integer beyond 64 bits"_s}))
            << json;
}

TEST(BriefingDecoder, BooleansAreNoNumbersAndViceVersa) {
    EXPECT_EQ(
        withCount("true").error().text(), u"chores.count: Expected an integer, found a boolean"_s);
    EXPECT_EQ(
        withGeneratedAt("false").error().text(),
        u"generatedAt: Expected a number, found a boolean"_s);
    EXPECT_EQ(
        decodeBriefing(minimalWith(R"("nextEvent": {"title": "T", "allDay": 1},)")).error().text(),
        u"nextEvent.allDay: Expected a boolean, found a number"_s);
}

TEST(BriefingDecoder, FloatsTakeAnyNumber) {
    EXPECT_EQ(withGeneratedAt("7").value().generatedAt, 7.0);
    EXPECT_EQ(withGeneratedAt("-7.25e-1").value().generatedAt, -0.725);
    EXPECT_EQ(withGeneratedAt("18446744073709551615").value().generatedAt, 0x1p64);
    EXPECT_EQ(
        withGeneratedAt("99999999999999999999999").value().generatedAt, 99999999999999999999999.0);
    EXPECT_EQ(
        withGeneratedAt("-99999999999999999999999").value().generatedAt,
        -99999999999999999999999.0);
    EXPECT_EQ(withGeneratedAt("1e-999").value().generatedAt, 0.0);
}

TEST(BriefingDecoder, AnEnormousIntegerLeavesTheOthersExact) {
    const auto briefing = decodeBriefing(
        minimalWith(R"("x": [99999999999999999999999, "\"88888888888888888888888"],)")
            .replace(R"("count": 0)", R"("count": 9223372036854775807)"));
    ASSERT_TRUE(briefing) << briefing.error().text().toStdString();
    EXPECT_EQ(briefing->chores.count, std::numeric_limits<qint64>::max());
}

TEST(BriefingDecoder, InfiniteNumbersAreNoJson) {
    for (const char* json :
         {"1e999", "-1e999", "NaN", "Infinity", "01", "1.", ".5", "+1", "0x10"}) {
        const auto result = withGeneratedAt(json);
        ASSERT_FALSE(result) << json;
        EXPECT_TRUE(result.error().path.isEmpty()) << json;
    }
    EXPECT_FALSE(withGeneratedAt(QByteArray(400, '9')));
}

TEST(BriefingDecoder, DatesAreInstants) {
    EXPECT_EQ(
        withStart(R"("2025-03-04T09:30:00Z")").value().nextEvent->start,
        at("2025-03-04T09:30:00Z"));
    EXPECT_EQ(
        withStart(R"("2025-03-04T09:30:00.250Z")").value().nextEvent->start,
        at("2025-03-04T09:30:00.25Z"));
    EXPECT_EQ(
        withStart(R"("2025-03-04T09:30:00+02:00")").value().nextEvent->start,
        at("2025-03-04T07:30:00Z"));
    EXPECT_EQ(
        withStart(R"("2025\u002d03-04T09:30:00Z")").value().nextEvent->start,
        at("2025-03-04T09:30:00Z"));
}

TEST(BriefingDecoder, BadDatesAreNamed) {
    for (const auto& date :
         {u"2025-03-04"_s, u"2025-03-04T09:30:00"_s, u"2025-03-04 09:30:00Z"_s,
          u"2025-02-30T09:30:00Z"_s, u"2025-03-04T25:30:00Z"_s, u"gestern ☂"_s, u""_s})
        EXPECT_EQ(
            withStart('"' + date.toUtf8() + '"').error(),
            (DecodeError{u"nextEvent.start"_s, u"Bad date: "_s + date}));
    EXPECT_EQ(
        withStart("1741080600").error().text(),
        u"nextEvent.start: Expected a string, found a number"_s);
}

TEST(BriefingDecoder, OneBadDateFailsTheWholeBriefing) {
    auto json = fixture(u"briefing-full.json"_s);
    json.replace("2025-03-05T00:00:00Z", "2025-03-05");
    EXPECT_EQ(decodeBriefing(json).error().text(), u"eventsToday[1].end: Bad date: 2025-03-05"_s);
}

TEST(BriefingDecoder, TextsAreUnescaped) {
    EXPECT_EQ(titleOf(R"("a\n\"\\\/\u00e9\ud83c\udf82 ☂")"), u"a\n\"\\/é🎂 ☂"_s);
    EXPECT_EQ(titleOf(R"("a\u0000b")"), QString(u"a\0b"_s));
    EXPECT_EQ(titleOf(R"("")"), u""_s);
}

TEST(BriefingDecoder, HalfASurrogatePairIsNoText) {
    for (const char* json : {R"("\ud800")", R"("\udc00")", R"("\ud800x")", R"("\ud800\u0041")"})
        EXPECT_TRUE(titleOf(json).startsWith(u"error: Not valid JSON"_s)) << json;
}

TEST(BriefingDecoder, KeysMayBeEscapedToo) {
    auto json = fixture(u"briefing-minimal.json"_s);
    json.replace(R"("date")", R"("\u0064ate")");
    EXPECT_TRUE(decodeBriefing(json));
}

TEST(BriefingDecoder, LongTextsSurvive) {
    const QByteArray megabyte(1'000'000, 'x');
    EXPECT_EQ(titleOf('"' + megabyte + '"'), QString::fromLatin1(megabyte));
    // And the next briefing is none the worse for it.
    EXPECT_TRUE(decodeBriefing(fixture(u"briefing-full.json"_s)));
}

TEST(BriefingDecoder, LongListsSurvive) {
    const QByteArray habit = R"({"id":"h","name":"n","done":true,"count":1,"target":2,"streak":3})";
    QByteArrayList habits(10'000, habit);
    const auto json = fixture(u"briefing-minimal.json"_s)
                          .replace(R"("items": [])", R"("items": [)" + habits.join(',') + ']');
    const auto briefing = decodeBriefing(json);
    ASSERT_TRUE(briefing);
    ASSERT_EQ(briefing->habits.items.size(), 10'000u);
    EXPECT_EQ(briefing->habits.items.back(), (Habit{u"h"_s, u"n"_s, true, 1, 2, 3}));
}

TEST(BriefingDecoder, OfEqualKeysTheLastCounts) {
    const auto first = minimalWith(R"("date": 5,)");
    EXPECT_TRUE(decodeBriefing(first));
    auto last = fixture(u"briefing-minimal.json"_s);
    last.replace(R"("focus": {})", R"("focus": {}, "date": "a", "date": "b")");
    EXPECT_EQ(decodeBriefing(last).value().date, u"b"_s);
    last.replace(R"("date": "b")", R"("date": null)");
    EXPECT_EQ(decodeBriefing(last).error().path, u"date"_s);
}

TEST(BriefingDecoder, UnknownMembersMayHoldAnything) {
    const QByteArray odd =
        R"("x": null, "y": [1, "2", {"title": 3}, [[]]], "": {}, "Date": 1, "dates": 2, "\ud83c\udf82": -1e5,)";
    EXPECT_EQ(
        decodeBriefing(minimalWith(odd)).value(),
        decodeBriefing(fixture(u"briefing-minimal.json"_s)).value());
}

TEST(BriefingDecoder, MembersMayComeInAnyOrder) {
    const auto briefing = decodeBriefing(
        R"({"focus":{"productiveShare":1},"habits":{"items":[],"total":3,"done":2},)"
        R"("chores":{"top":[],"count":1},"eventsToday":[],"generatedAt":5,"date":"d"})");
    ASSERT_TRUE(briefing) << briefing.error().text().toStdString();
    EXPECT_EQ(briefing->date, u"d"_s);
    EXPECT_EQ(briefing->habits.done, 2);
    EXPECT_EQ(briefing->habits.total, 3);
}

TEST(BriefingDecoder, ErrorsReadAsOneLine) {
    EXPECT_EQ((DecodeError{u"date"_s, u"Missing"_s}).text(), u"date: Missing"_s);
    EXPECT_EQ((DecodeError{{}, u"Empty document"_s}).text(), u"Empty document"_s);
}
