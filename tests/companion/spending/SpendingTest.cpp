#include "companion/spending/Csv.h"
#include "companion/spending/JournalSpending.h"
#include "companion/spending/SpendingFigures.h"
#include "support/Patience.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace lumora::tests;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

const QDate march4(2025, 3, 4);

SpendingPart figures(const SpentInMonths& spent, const JournalSettings& settings = {}) {
    const auto part = spendingFigures(spent, settings, march4, 5.0);
    EXPECT_TRUE(part);
    return part.value_or(SpendingPart());
}

} // namespace

TEST(Balances, AreOfTheMonthUpToToday) {
    EXPECT_EQ(thisMonth(march4), (SpendingPeriod{QDate(2025, 3, 1), QDate(2025, 3, 5)}));
    EXPECT_EQ(lastMonth(march4), (SpendingPeriod{QDate(2025, 2, 1), QDate(2025, 2, 5)}));
    EXPECT_EQ(
        thisMonth(QDate(2025, 12, 31)), (SpendingPeriod{QDate(2025, 12, 1), QDate(2026, 1, 1)}));
    // February has no 31st, nor has it always a 29th.
    EXPECT_EQ(
        lastMonth(QDate(2025, 3, 31)), (SpendingPeriod{QDate(2025, 2, 1), QDate(2025, 3, 1)}));
    EXPECT_EQ(
        lastMonth(QDate(2024, 3, 31)), (SpendingPeriod{QDate(2024, 2, 1), QDate(2024, 3, 1)}));
    EXPECT_EQ(
        lastMonth(QDate(2025, 1, 31)), (SpendingPeriod{QDate(2024, 12, 1), QDate(2025, 1, 1)}));
}

TEST(Balances, AreAskedForByOneCommand) {
    EXPECT_EQ(
        balanceCommand(u"a b.journal"_s, thisMonth(march4)).join(u'|'),
        u"hledger|-f|a b.journal|balance|expenses|-B|--flat|--depth|2|-N|--layout=bare|-O|csv|"
        "-b|2025-03-01|-e|2025-03-05"_s);
}

TEST(Balances, AreReadFromCsv) {
    EXPECT_EQ(
        balancesIn("\"account\",\"commodity\",\"balance\"\n\"expenses:\"\"odd, name\"\"\",\"EUR\","
                   "\"61.35\"\n\"expenses:food\",\"€\",\"1231,50\"\n"),
        (std::vector<Balance>{
            {u"expenses:\"odd, name\""_s, u"EUR"_s, 61.35}, {u"expenses:food"_s, u"€"_s, 1231.5}}));
    EXPECT_EQ(balancesIn("\"account\",\"commodity\",\"balance\"\n"), std::vector<Balance>());
    for (const QByteArray other :
         {"", "Error", "\"account\",\"commodity\",\"balance\"\n\"a\",\"EUR\"\n",
          "\"account\",\"commodity\",\"balance\"\n\"a\",\"EUR\",\"x\"\n",
          "\"account\",\"commodity\",\"balance\"\n\"a\",\"EUR\",\"1"})
        EXPECT_FALSE(balancesIn(other)) << other.constData();
}

TEST(Balances, AreNumbersOfAnyCountry) {
    const QList<std::pair<QString, double>> amounts{
        {u"61.35"_s, 61.35},       {u"1231,50"_s, 1231.5},        {u"-3"_s, -3},
        {u"1,231.50"_s, 1231.5},   {u"1.231,50"_s, 1231.5},       {u"1 231,50"_s, 1231.5},
        {u"1.234.567"_s, 1234567}, {u"1,234,567.8"_s, 1234567.8}, {u"1'234.5"_s, 1234.5},
    };
    for (const auto& [text, amount] : amounts)
        EXPECT_EQ(amountFrom(text), amount) << qPrintable(text);
    for (const QString& text :
         {u""_s, u"1e5"_s, u"inf"_s, u"nan"_s, u"EUR 5"_s, u"--5"_s, u"0x1"_s})
        EXPECT_EQ(amountFrom(text), std::nullopt) << qPrintable(text);
}

TEST(Csv, HasQuotesLinesAndEmptyFields) {
    EXPECT_EQ(
        csvRows("a,\"b \"\"c\"\", d\n\",\r\n,\nlast"),
        (QList<QStringList>{{u"a"_s, u"b \"c\", d\n"_s, u""_s}, {u""_s, u""_s}, {u"last"_s}}));
    EXPECT_EQ(csvRows(""), QList<QStringList>());
    EXPECT_EQ(csvRows("\"open"), std::nullopt);
}

TEST(SpendingFigures, SumUpAndCompare) {
    const SpentInMonths spent{
        {{u"expenses:food"_s, u"EUR"_s, 61.35},
         {u"expenses:rent"_s, u"EUR"_s, 700.1},
         {u"expenses:refunds"_s, u"EUR"_s, -11.45}},
        {{u"expenses:food"_s, u"EUR"_s, 600}}};
    const SpendingPart part = figures(spent);
    EXPECT_EQ(part.mtd, 750);
    EXPECT_EQ(part.sameDayLastMonth, 600);
    EXPECT_EQ(part.deltaFraction, 0.25);
    ASSERT_EQ(part.top.size(), 2U);
    EXPECT_EQ(part.top[0].bucket, u"expenses:rent"_s);
    EXPECT_EQ(part.top[0].label, u"Rent"_s);
    EXPECT_EQ(part.top[1].label, u"Food"_s);
    EXPECT_NE(part.top[0].color, part.top[1].color);
    EXPECT_EQ(part.asOf, u"2025-03-04"_s);
    EXPECT_EQ(part.generatedAt, 5.0);
    EXPECT_FALSE(part.stale);
}

TEST(SpendingFigures, CompareWithNothingNotAtAll) {
    const SpendingPart part = figures({{{u"expenses"_s, u"EUR"_s, 5}}, {}});
    EXPECT_EQ(part.deltaFraction, std::nullopt);
    EXPECT_EQ(part.top.front().label, u"Expenses"_s);
    EXPECT_EQ(figures({}).mtd, 0);
}

TEST(SpendingFigures, ShowBucketsAsTheirOwnerWants) {
    JournalSettings settings;
    settings.buckets = {{u"expenses:food"_s, u"Groceries"_s, u"🛒"_s, u"#1E90FF"_s}};
    const SpendingPart part = figures({{{u"expenses:food"_s, u"EUR"_s, 5}}, {}}, settings);
    EXPECT_THAT(
        part.top,
        ElementsAre(BucketPart{u"expenses:food"_s, u"Groceries"_s, u"🛒"_s, u"#1E90FF"_s, 5}));
}

TEST(SpendingFigures, KeepToOneCurrency) {
    const SpentInMonths spent{
        {{u"expenses:food"_s, u"EUR"_s, 5}, {u"expenses:food"_s, u"USD"_s, 7}}, {}};
    JournalSettings settings;
    EXPECT_EQ(
        spendingFigures(spent, settings, march4, 0).error(),
        u"The journal has EUR and USD; choose one with currency in [spending]"_s);
    settings.currency = u"USD"_s;
    EXPECT_EQ(figures(spent, settings).mtd, 7);
    EXPECT_EQ(figures(spent, settings).top.size(), 1U);
}

namespace {

/// What a real hledger makes of a journal.
class Journals : public testing::Test {
protected:
    PartOutcome<SpendingPart> ask(const QByteArray& journal, const QString& currency = {}) {
        QFile file(folder.filePath(u"my.journal"_s));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(journal);
        file.close();
        const auto question = journalSpending(
            {file.fileName(), currency, {}}, commands, [] { return QTimeZone("Europe/Berlin"); });
        std::optional<PartOutcome<SpendingPart>> answer;
        question(
            std::chrono::sys_days(2025y / 3 / 3) + 23h, [&](const auto& part) { answer = part; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }, patience))
            return tl::unexpected(u"(nothing)"_s);
        return *answer;
    }

    QTemporaryDir folder;
    Commands commands;
};

} // namespace

TEST_F(Journals, AreReadByHledger) {
    // It is the fourth of March already where its owner is; the fifth is still to come.
    const auto part = ask(R"(
2025-02-04 last month
    expenses:food:fish   50 EUR
    assets
2025-02-05 later last month
    expenses:food        99 EUR
    assets
2025-03-01 fish
    expenses:food:fish   61,35 EUR
    assets
2025-03-04 abroad
    expenses:travel      20 USD @@ 18 EUR
    assets
2025-03-05 ahead
    expenses:rent        700 EUR
    assets
)");
    ASSERT_TRUE(part) << qPrintable(part.error());
    EXPECT_EQ(part->mtd, 79.35);
    EXPECT_EQ(part->sameDayLastMonth, 50);
    ASSERT_EQ(part->top.size(), 2U);
    EXPECT_EQ(part->top[0].bucket, u"expenses:food"_s);
    EXPECT_EQ(part->top[1].amount, 18);
    EXPECT_EQ(part->asOf, u"2025-03-04"_s);
}

TEST_F(Journals, ThatAreNotInOrderSayWhy) {
    const auto part = ask("2025-03-01 unbalanced\n    expenses  5 EUR\n    assets  3 EUR\n");
    ASSERT_FALSE(part);
    EXPECT_TRUE(part.error().startsWith(u"hledger: "_s)) << qPrintable(part.error());
}
