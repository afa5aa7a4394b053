#include "texts/CheckedBriefing.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QString checked(const Briefing& briefing) {
    return checkedBriefing(briefing, at("2025-03-04T09:20:00Z"), QTimeZone::utc(), QLocale::c());
}

} // namespace

TEST(CheckedBriefing, SaysWhatLabelTooltipAndPanelWouldShow) {
    Briefing briefing = makeBriefing({makeEvent(
        {.title = u"Stand\x1b[2Jup"_s,
         .start = at("2025-03-04T09:30:00Z"),
         .end = at("2025-03-04T10:00:00Z")})});
    briefing.date = u"2025-03-04\n"_s;
    briefing.chores = {1, {{u"c1"_s, u"Water plants"_s, u"Kitchen"_s, 3}}};
    EXPECT_EQ(
        checked(briefing), u"Briefing: of 2025-03-04 \n"
                           "Label:    Stand [2Jup · 10m (calendar.badge.clock)\n"
                           "Tooltip:  Stand [2Jup\n"
                           "          In 10m, at 9:30 am\n"
                           "          Updated just now\n"
                           "Events: 1 left\n"
                           "  9:30 am · Stand [2Jup\n"
                           "Habits: 0/0 done\n"
                           "Chores: 1 due\n"
                           "  Water plants · Kitchen · 3d over\n"
                           "Spending: none\n"_s);
}

TEST(CheckedBriefing, TellsOfSpendingWithoutItsAmounts) {
    Briefing briefing = makeBriefing({});
    briefing.spending = Spending();
    briefing.spending->mtd = 1234.5;
    briefing.spending->asOf = u"today\x1b[2J"_s;
    const QString text = checked(briefing);
    EXPECT_TRUE(text.endsWith(
        u"Spending: 0 buckets, as of today [2J; amounts stay hidden until they are revealed\n"_s))
        << qPrintable(text);
    EXPECT_FALSE(text.contains(u"234"));
}
