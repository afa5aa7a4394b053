#include "ui/panel/RowContents.h"

#include "briefing/TextBounds.h"
#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "ui/rows/TextDrawing.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QLocale american(u"en_US"_s);

Habit habit(bool done, qint64 count, qint64 target, qint64 streak) {
    return {u"read"_s, u"Read"_s, done, count, target, streak};
}

RowContent chore(std::optional<qint64> daysOverdue) {
    return choreRow({u"water"_s, u"Water plants"_s, u"Balcony"_s, daysOverdue});
}

Briefing day(qint64 done, qint64 total, std::optional<double> share) {
    Briefing briefing = makeBriefing();
    briefing.habits.done = done;
    briefing.habits.total = total;
    briefing.focus.productiveShare = share;
    return briefing;
}

Spending spending(std::optional<double> deltaFraction) {
    return {
        .mtd = 1234.56,
        .sameDayLastMonth = 1000,
        .deltaFraction = deltaFraction,
        .top = {},
        .asOf = u"2025-03-03"_s,
    };
}

constexpr BucketColumns columns{.icons = 12};

TimeCell cell(const QString& time) {
    return {time, 58};
}

RowContent bucket(const QString& color) {
    return bucketRow({u"food"_s, u"Food"_s, u"🍎"_s, color, 99.6}, columns, american);
}

TextStyle symbolStyle(const RowContent& row, std::size_t item = 0) {
    EXPECT_EQ(row.items.at(item).kind, RowItem::Kind::Symbol);
    return row.items.at(item).style;
}

} // namespace

TEST(HeaderRow, SaysTodayAndTheAge) {
    const RowContent row = headerRow(u"1m ago"_s);
    EXPECT_EQ(textsOf(row), (QStringList{u"Today"_s, u"1m ago"_s}));
    EXPECT_EQ(styleOf(row, u"Today"_s), (TextStyle{.role = TextRole::Headline}));
    EXPECT_EQ(
        styleOf(row, u"1m ago"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    EXPECT_EQ(textsOf(headerRow({})), QStringList{u"Today"_s});
    EXPECT_EQ(headerRow(u"4m ago"_s).alignment, RowContent::Alignment::FirstBaseline);
}

TEST(SectionHeaderRow, HasSymbolTitleBadgeSummaryAndChevron) {
    const RowContent row = sectionHeaderRow(u"Chores due"_s, u"checklist"_s, 3, u"7 due"_s, -90);
    EXPECT_EQ(textsOf(row), (QStringList{u"CHORES DUE"_s, u"3"_s, u"7 due"_s}));
    EXPECT_EQ(symbolsOf(row), (QStringList{u"checklist"_s, u"chevron.down"_s}));
    EXPECT_DOUBLE_EQ(row.spacing, 6);
    EXPECT_EQ(symbolStyle(row).color, ColorRole::Secondary);
    const TextStyle title = styleOf(row, u"CHORES DUE"_s);
    EXPECT_EQ(title.role, TextRole::Caption);
    EXPECT_EQ(title.weight, QFont::DemiBold);
    EXPECT_EQ(title.color, ColorRole::Secondary);
    EXPECT_EQ(styleOf(row, u"3"_s).role, TextRole::Caption2);
    EXPECT_EQ(
        styleOf(row, u"7 due"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    const RowItem& chevron = row.items.back();
    EXPECT_EQ(chevron.style.role, TextRole::Caption2);
    EXPECT_EQ(chevron.style.color, ColorRole::Tertiary);
    EXPECT_DOUBLE_EQ(chevron.rotation, -90);
}

TEST(SectionHeaderRow, LeavesOutWhatIsAbsent) {
    const RowContent row = sectionHeaderRow(u"Habits"_s, u"flame"_s, std::nullopt, std::nullopt, 0);
    EXPECT_EQ(textsOf(row), QStringList{u"HABITS"_s});
    EXPECT_DOUBLE_EQ(row.items.back().rotation, 0);
}

TEST(EventRowContent, OfTheNextMeetingStandsOut) {
    const RowContent row = eventRow(makeEvent({.location = u"Room 4"_s}), cell(u"9:05 am"_s), true);
    EXPECT_EQ(textsOf(row), (QStringList{u"9:05 am"_s, u"Standup"_s, u"Room 4"_s}));
    EXPECT_EQ(
        styleOf(row, u"9:05 am"_s),
        (TextStyle{.role = TextRole::Caption, .equalWidthDigits = true}));
    EXPECT_EQ(styleOf(row, u"Standup"_s), (TextStyle{.weight = QFont::DemiBold}));
    EXPECT_EQ(
        styleOf(row, u"Room 4"_s),
        (TextStyle{.role = TextRole::Caption2, .color = ColorRole::Secondary}));
    EXPECT_DOUBLE_EQ(row.spacing, 8);
    EXPECT_EQ(row.alignment, RowContent::Alignment::FirstBaseline);
}

TEST(EventRowContent, OfAnyOtherEventIsRegular) {
    const RowContent row = eventRow(makeEvent({}), cell(u"all-day"_s), false);
    EXPECT_EQ(styleOf(row, u"all-day"_s).color, ColorRole::Secondary);
    EXPECT_EQ(styleOf(row, u"Standup"_s), TextStyle{});
}

TEST(EventRowContent, HasNoLineForAnEmptyPlace) {
    EXPECT_EQ(
        textsOf(eventRow(makeEvent({.location = u""_s}), cell(u"9:05 am"_s), false)),
        (QStringList{u"9:05 am"_s, u"Standup"_s}));
}

TEST(EventRowContent, TheColumnOfTimesIsAsWideAsTheWidestNeeds) {
    EXPECT_DOUBLE_EQ(timeColumn({}, plainTheme()), 58);
    EXPECT_DOUBLE_EQ(timeColumn({u"9:05 am"_s}, plainTheme()), 58);
    const QString wide = u"12:30 pm and some"_s;
    for (const double points : {10.0, 22.0}) {
        const Theme theme = stillTheme(points);
        const RowContent row =
            eventRow(makeEvent({}), {u"9:05 am"_s, timeColumn({wide}, theme)}, false);
        const TextStyle style{.role = TextRole::Caption, .equalWidthDigits = true};
        EXPECT_NEAR(
            layOutRow(row, theme, 640).items.front().width(), textWidth({wide, style}, theme), 1);
    }
}

TEST(EventRowContent, TitlesLineUpWhateverTheTimeIs) {
    for (const QString& time : {u""_s, u"9:05 am"_s, u"12:30 pm"_s, u"all-day"_s}) {
        const RowContent row = eventRow(makeEvent({}), cell(time), false);
        const RowGeometry geometry = layOutRow(row, plainTheme(), 296);
        EXPECT_DOUBLE_EQ(geometry.items.at(0).width(), 58);
        EXPECT_DOUBLE_EQ(geometry.items.at(1).left(), 58 + 8);
    }
}

TEST(HabitRowContent, OfAnOpenHabitIsPlain) {
    const RowContent row = habitRow(habit(false, 0, 1, 0));
    EXPECT_EQ(symbolsOf(row), QStringList{u"circle"_s});
    EXPECT_EQ(symbolStyle(row).color, ColorRole::Secondary);
    EXPECT_EQ(textsOf(row), QStringList{u"Read"_s});
    EXPECT_EQ(styleOf(row, u"Read"_s), TextStyle{});
    EXPECT_DOUBLE_EQ(row.spacing, 6);
}

TEST(HabitRowContent, OfADoneHabitIsCheckedAndStruckThrough) {
    const RowContent row = habitRow(habit(true, 1, 1, 12));
    EXPECT_EQ(symbolsOf(row), QStringList{u"checkmark.circle.fill"_s});
    EXPECT_EQ(symbolStyle(row).color, ColorRole::Green);
    EXPECT_EQ(textsOf(row), (QStringList{u"Read"_s, u"12🔥"_s}));
    EXPECT_EQ(
        styleOf(row, u"Read"_s), (TextStyle{.color = ColorRole::Secondary, .struckThrough = true}));
}

TEST(HabitRowContent, OfACountedHabitHasItsCount) {
    const RowContent row = habitRow(habit(false, 2, 8, 4));
    EXPECT_EQ(textsOf(row), (QStringList{u"Read"_s, u"2/8"_s, u"4🔥"_s}));
    EXPECT_EQ(
        styleOf(row, u"2/8"_s),
        (TextStyle{
            .role = TextRole::Caption, .color = ColorRole::Secondary, .equalWidthDigits = true}));
    EXPECT_EQ(
        styleOf(row, u"4🔥"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    EXPECT_EQ(textsOf(habitRow(habit(false, 2, 8, 0))), (QStringList{u"Read"_s, u"2/8"_s}));
}

TEST(ChoreRowContent, IsOrangeFromTheFirstDayOn) {
    const RowContent late = chore(1);
    EXPECT_EQ(textsOf(late), (QStringList{u"Water plants"_s, u"1d over"_s}));
    EXPECT_EQ(
        styleOf(late, u"1d over"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Orange}));
    EXPECT_EQ(styleOf(chore(5), u"5d over"_s).color, ColorRole::Orange);
    EXPECT_EQ(styleOf(chore(0), u"due today"_s).color, ColorRole::Secondary);
    EXPECT_EQ(styleOf(chore(-2), u"due today"_s).color, ColorRole::Secondary);
    EXPECT_EQ(styleOf(chore({}), u"never done"_s).color, ColorRole::Secondary);
    EXPECT_EQ(symbolsOf(late), QStringList{u"circle"_s});
    EXPECT_EQ(symbolStyle(late).color, ColorRole::Secondary);
    EXPECT_EQ(styleOf(late, u"Water plants"_s), TextStyle{});
}

TEST(FocusRow, ShowsProgressAndShareSixteenApart) {
    const RowContent row = focusRow(day(2, 5, 0.456));
    EXPECT_EQ(textsOf(row), (QStringList{u"2/5 done"_s, u"46% focus"_s}));
    EXPECT_EQ(symbolsOf(row), (QStringList{u"flame"_s, u"brain.head.profile"_s}));
    EXPECT_EQ(
        styleOf(row, u"2/5 done"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    EXPECT_EQ(styleOf(row, u"46% focus"_s).color, ColorRole::Secondary);
    const RowGeometry geometry = layOutRow(row, plainTheme(), 296);
    EXPECT_DOUBLE_EQ(geometry.items.at(2).left() - geometry.items.at(1).right(), 16);
}

TEST(FocusRow, IsGreenWhenEverythingIsDone) {
    const RowContent row = focusRow(day(3, 3, std::nullopt));
    EXPECT_EQ(textsOf(row), QStringList{u"3/3 done"_s});
    EXPECT_EQ(styleOf(row, u"3/3 done"_s).color, ColorRole::Green);
    EXPECT_EQ(symbolStyle(row).color, ColorRole::Green);
    EXPECT_EQ(styleOf(focusRow(day(4, 3, {})), u"4/3 done"_s).color, ColorRole::Secondary);
}

TEST(FocusRow, RoundsTheShare) {
    EXPECT_EQ(textsOf(focusRow(day(0, 0, 0.004))), QStringList{u"0% focus"_s});
    EXPECT_EQ(textsOf(focusRow(day(0, 0, 0.995))), QStringList{u"100% focus"_s});
    EXPECT_EQ(textsOf(focusRow(day(0, 0, 1.0))), QStringList{u"100% focus"_s});
}

TEST(FocusRow, IsEmptyWithoutHabitsAndShare) {
    EXPECT_EQ(textsOf(focusRow(day(0, 0, std::nullopt))), QStringList());
    EXPECT_EQ(symbolsOf(focusRow(day(0, 0, std::nullopt))), QStringList());
}

TEST(SpendingTotal, IsLargeWithEqualDigits) {
    const RowContent row = spendingTotalRow(spending({}), american);
    EXPECT_EQ(textsOf(row), (QStringList{u"$1,235"_s, u"MTD"_s}));
    EXPECT_EQ(
        styleOf(row, u"$1,235"_s),
        (TextStyle{.role = TextRole::Title3, .weight = QFont::DemiBold, .equalWidthDigits = true}));
    EXPECT_EQ(
        styleOf(row, u"MTD"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    EXPECT_EQ(row.alignment, RowContent::Alignment::FirstBaseline);
    EXPECT_DOUBLE_EQ(row.spacing, 6);
}

TEST(SpendingPaceRow, FollowsTheSignAlone) {
    const auto check = [](double delta, const QString& text, const QString& symbol,
                          ColorRole color) {
        const RowContent row = spendingPaceRow(spending(delta));
        EXPECT_EQ(textsOf(row), QStringList{text});
        EXPECT_EQ(symbolsOf(row), QStringList{symbol});
        EXPECT_EQ(styleOf(row, text), (TextStyle{.role = TextRole::Caption, .color = color}));
        EXPECT_EQ(symbolStyle(row).role, TextRole::Caption2);
        EXPECT_EQ(symbolStyle(row).color, color);
        EXPECT_DOUBLE_EQ(row.spacing, 4);
    };
    check(-0.2, u"20% under last month"_s, u"arrow.down.right"_s, ColorRole::Secondary);
    check(0.2, u"20% ahead of last month"_s, u"arrow.up.right"_s, ColorRole::Orange);
    check(0.001, u"same as last month"_s, u"arrow.up.right"_s, ColorRole::Orange);
    check(0, u"same as last month"_s, u"arrow.down.right"_s, ColorRole::Secondary);
}

TEST(SpendingPaceRow, HasNoArrowWithoutAComparison) {
    const RowContent row = spendingPaceRow(spending(std::nullopt));
    EXPECT_EQ(textsOf(row), QStringList{u"no comparison for last month"_s});
    EXPECT_EQ(symbolsOf(row), QStringList());
    EXPECT_EQ(
        styleOf(row, u"no comparison for last month"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
}

TEST(BucketRow, HasBarIconLabelAndAmount) {
    const RowContent row = bucket(u"#1E90FF"_s);
    ASSERT_EQ(row.items.front().kind, RowItem::Kind::Bar);
    EXPECT_EQ(row.items.front().barColor.rgb(), QColor(30, 144, 255).rgb());
    EXPECT_DOUBLE_EQ(row.items.front().width, 2.5);
    EXPECT_EQ(textsOf(row), (QStringList{u"🍎"_s, u"Food"_s, u"$100"_s}));
    EXPECT_EQ(styleOf(row, u"🍎"_s), (TextStyle{.role = TextRole::Caption}));
    EXPECT_EQ(styleOf(row, u"Food"_s), TextStyle{});
    EXPECT_EQ(
        styleOf(row, u"$100"_s),
        (TextStyle{.color = ColorRole::Secondary, .equalWidthDigits = true}));
    EXPECT_DOUBLE_EQ(row.spacing, 6);
}

TEST(BucketRow, WithAnUnusableColourHasNoBar) {
    const RowContent row = bucket(u"#abc"_s);
    EXPECT_EQ(row.items.front().kind, RowItem::Kind::Text);
    EXPECT_EQ(textsOf(row), (QStringList{u"🍎"_s, u"Food"_s, u"$100"_s}));
}

TEST(BucketRow, LabelsStandInOneColumn) {
    const std::vector<Bucket> buckets = {
        {u"a"_s, u"Food"_s, u"🍎"_s, u"#1E90FF"_s, 1},
        {u"b"_s, u"Rent"_s, u"iii"_s, u"none"_s, 2},
        {u"c"_s, u"Rest"_s, u""_s, u"#1E90FF"_s, 3}};
    const BucketColumns shared = bucketColumns(buckets, plainTheme());
    EXPECT_TRUE(shared.bars);
    std::set<double> lefts;
    for (const Bucket& bucket : buckets)
        lefts.insert(
            layOutRow(bucketRow(bucket, shared, american), plainTheme(), 296).items.at(2).left());
    EXPECT_EQ(lefts.size(), 1U);
}

TEST(BucketRow, HasNoRoomForBarsWhereThereAreNone) {
    const std::vector<Bucket> buckets = {{u"a"_s, u"Food"_s, u"🍎"_s, u"none"_s, 1}};
    EXPECT_FALSE(bucketColumns(buckets, plainTheme()).bars);
}

TEST(BucketRow, KeepsItsAmountInSightWhateverIconAndLabelAre) {
    const QString endless(10'240, u'W');
    const RowContent row =
        bucketRow({u"food"_s, endless, endless, u"#1E90FF"_s, 99.6}, columns, american);
    const RowGeometry geometry = layOutRow(row, plainTheme(), 296);
    EXPECT_DOUBLE_EQ(geometry.items.back().right(), 296);
    EXPECT_GE(geometry.items.at(3).width(), 8);
    const QString kept = beginning(endless, longestLine);
    EXPECT_EQ(cutTexts(row, plainTheme(), 296), (QStringList{kept, kept}));
}

TEST(SpendingAsOfRow, HasTheClockSymbol) {
    const RowContent row = spendingAsOfRow(spending({}));
    EXPECT_EQ(textsOf(row), QStringList{u"as of 2025-03-03"_s});
    EXPECT_EQ(symbolsOf(row), QStringList{u"clock.arrow.circlepath"_s});
    EXPECT_EQ(
        styleOf(row, u"as of 2025-03-03"_s),
        (TextStyle{.role = TextRole::Caption2, .color = ColorRole::Secondary}));
}
