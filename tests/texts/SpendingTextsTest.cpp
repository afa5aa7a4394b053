#include "texts/SpendingTexts.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant revealedAt = at("2025-03-04T10:00:00Z");

Spending spending(std::optional<double> deltaFraction) {
    return {
        .mtd = 1234.56,
        .sameDayLastMonth = 1000,
        .deltaFraction = deltaFraction,
        .top = {},
        .asOf = u"2025-03-03"_s,
    };
}

std::optional<QString> pace(std::optional<double> deltaFraction) {
    return SpendingTexts::paceLabel(spending(deltaFraction));
}

} // namespace

TEST(SpendingReveal, LastsNinetySeconds) {
    EXPECT_TRUE(SpendingTexts::isRevealed(revealedAt, revealedAt));
    EXPECT_TRUE(SpendingTexts::isRevealed(revealedAt, revealedAt + 89s));
    EXPECT_TRUE(SpendingTexts::isRevealed(revealedAt, revealedAt + 89'999'999us));
    EXPECT_FALSE(SpendingTexts::isRevealed(revealedAt, revealedAt + 90s));
    EXPECT_FALSE(SpendingTexts::isRevealed(revealedAt, revealedAt + 24h));
}

TEST(SpendingReveal, NeedsARequest) {
    EXPECT_FALSE(SpendingTexts::isRevealed(std::nullopt, revealedAt));
}

TEST(SpendingReveal, HoldsWhileTheTickerLagsBehindTheRequest) {
    EXPECT_TRUE(SpendingTexts::isRevealed(revealedAt, revealedAt - 29s));
}

TEST(SpendingSummary, TellsTheFigureOnlyWhileRevealed) {
    const QLocale locale(u"en_US"_s);
    EXPECT_EQ(SpendingTexts::summary(spending({}), true, locale), u"$1,235 MTD"_s);
    EXPECT_EQ(SpendingTexts::summary(spending({}), false, locale), u"hidden"_s);
}

TEST(SpendingPace, IsInWords) {
    EXPECT_EQ(SpendingTexts::pace(spending({})), u"no comparison for last month"_s);
    EXPECT_EQ(SpendingTexts::pace(spending(-0.2)), u"20% under last month"_s);
    EXPECT_EQ(SpendingTexts::pace(spending(0.2)), u"20% ahead of last month"_s);
    EXPECT_EQ(SpendingTexts::pace(spending(0.001)), u"same as last month"_s);
}

TEST(SpendingAsOf, QuotesTheProducersDay) {
    EXPECT_EQ(SpendingTexts::asOf(spending({})), u"as of 2025-03-03"_s);
}

TEST(SpendingPace, PaceIsAbsentWithoutAComparison) {
    EXPECT_EQ(pace(std::nullopt), std::nullopt);
}

TEST(SpendingPace, PaceBelowOnePercentIsTheSame) {
    EXPECT_EQ(pace(0.0099), u"same as last month"_s);
    EXPECT_EQ(pace(-0.0099), u"same as last month"_s);
    EXPECT_EQ(pace(0.0), u"same as last month"_s);
    EXPECT_EQ(pace(-0.0), u"same as last month"_s);
}

TEST(SpendingPace, PaceNamesShareAndDirection) {
    EXPECT_EQ(pace(0.187), u"19% ahead of last month"_s);
    EXPECT_EQ(pace(-0.05), u"5% under last month"_s);
    EXPECT_EQ(pace(-0.01), u"1% under last month"_s);
    EXPECT_EQ(pace(0.124), u"12% ahead of last month"_s);
    EXPECT_EQ(pace(0.125), u"13% ahead of last month"_s);
    EXPECT_EQ(pace(12.5), u"1250% ahead of last month"_s);
}
