#include "companion/briefing/BriefingText.h"

#include "briefing/BriefingDecoder.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;
using namespace lumora::companion;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::sys_seconds noon = std::chrono::sys_days(2025y / 3 / 4) + 12h;

/// What Lumora makes of the briefing.
Briefing decoded(const BriefingParts& parts) {
    const QByteArray text = briefingText(parts, noon);
    const auto briefing = decodeBriefing(text);
    EXPECT_TRUE(briefing) << text.constData() << qPrintable(briefing.error().text());
    return briefing.value_or(Briefing());
}

} // namespace

TEST(BriefingText, IsTakenWithNothingInIt) {
    BriefingParts parts;
    parts.date = QDate(2025, 3, 4);
    const Briefing briefing = decoded(parts);
    EXPECT_EQ(briefing.date, u"2025-03-04"_s);
    EXPECT_EQ(briefing.generatedAt, double(noon.time_since_epoch().count()));
    EXPECT_TRUE(briefing.eventsToday.empty());
    EXPECT_EQ(briefing.spending, std::nullopt);
    EXPECT_EQ(briefing.focus.productiveShare, std::nullopt);
}

TEST(BriefingText, SaysEverythingThatThereIs) {
    BriefingParts parts;
    parts.date = QDate(2025, 3, 4);
    parts.events = {
        {u"Holiday \"x\" \u2028\n"_s, true, noon - 12h, noon + 12h, {}, {}, u"Home"_s},
        {u""_s, false, noon, noon + 30min, u"Room 2"_s,
         QUrl(u"https://meet.example.org/ä b?x=1#y"_s), u"Work"_s}};
    parts.habits = {1, 1, {{u"read"_s, u"Read"_s, true, 2, 1, 3}}};
    parts.chores = {2, {{u"a"_s, u"A"_s, u"R"_s, 4}, {u"b"_s, u"B"_s, {}, std::nullopt}}};
    parts.focus = {0.42};
    parts.spending = SpendingPart{
        10, 8, 0.25, {{u"f"_s, u"Food"_s, u"🛒"_s, u"#1E90FF"_s, 10}}, u"2025-03-04"_s, 7.5, true};

    const Briefing briefing = decoded(parts);
    ASSERT_EQ(briefing.eventsToday.size(), 2U);
    const BriefEvent holiday{
        u"Holiday \"x\" \u2028\n"_s, noon - 12h, noon + 12h, true, {}, u"Home"_s, {}};
    EXPECT_EQ(briefing.eventsToday[0], holiday);
    const BriefEvent meeting{
        u"(No title)"_s,
        noon,
        noon + 30min,
        false,
        u"Room 2"_s,
        u"Work"_s,
        u"https://meet.example.org/%C3%A4%20b?x=1#y"_s};
    EXPECT_EQ(briefing.eventsToday[1], meeting);
    EXPECT_EQ(briefing.habits, (Habits{1, 1, {{u"read"_s, u"Read"_s, true, 2, 1, 3}}}));
    const Chores chores{2, {{u"a"_s, u"A"_s, u"R"_s, 4}, {u"b"_s, u"B"_s, {}, std::nullopt}}};
    EXPECT_EQ(briefing.chores, chores);
    EXPECT_EQ(briefing.focus, Focus{0.42});
    const Spending spending{
        10, 8, 0.25, {{u"f"_s, u"Food"_s, u"🛒"_s, u"#1E90FF"_s, 10}}, u"2025-03-04"_s, 7.5, true};
    EXPECT_EQ(briefing.spending, spending);
}

TEST(BriefingText, IsTakenWhateverTextsAreInIt) {
    const QString broken = u"a"_s + QChar(0xdc00) + QChar(0) + QChar(0xfffe) + QChar(0xd800);
    BriefingParts parts;
    parts.date = QDate(2025, 3, 4);
    parts.events = {{broken, false, noon, noon, broken, {}, broken}};
    parts.habits = {0, 1, {{broken, broken, false, 0, 1, 0}}};
    parts.troubles = {{broken, noon - 24h}};
    EXPECT_EQ(decoded(parts).eventsToday.size(), 2U);
}

TEST(BriefingText, NamesWhatHasNotAnsweredForHours) {
    BriefingParts parts;
    parts.date = QDate(2025, 3, 4);
    parts.troubles = {{u"Spending"_s, noon - 5h - 10min}, {u"Focus"_s, noon - 3h + 1s}};
    const Briefing briefing = decoded(parts);
    ASSERT_EQ(briefing.eventsToday.size(), 1U);
    EXPECT_EQ(briefing.eventsToday[0].title, u"Spending: no answer for 5 hours"_s);
    EXPECT_TRUE(briefing.eventsToday[0].allDay);
    EXPECT_EQ(briefing.eventsToday[0].start, std::nullopt); // never counted down to
}
