#include "ui/panel/RowContents.h"

#include "briefing/CssColor.h"
#include "briefing/TextBounds.h"
#include "texts/Formatters.h"
#include "texts/PanelTexts.h"
#include "texts/SpendingTexts.h"
#include "ui/rows/TextDrawing.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr double leastTimeColumn = 58;
constexpr double barWidth = 2.5;

/// The chevron is a narrow drawing: its square would leave a gap at the panel's edge.
constexpr double chevronWidth = 8;

constexpr double paceGap = 4;
constexpr double leastGapBeforeAmount = 8;

/// Icons are a picture or two; what is longer is cut.
constexpr double widestIconColumn = 48;

constexpr TextStyle caption(ColorRole color = ColorRole::Secondary) {
    return {.role = TextRole::Caption, .color = color};
}

constexpr TextStyle timeStyle(ColorRole color) {
    return {.role = TextRole::Caption, .color = color, .equalWidthDigits = true};
}

/// The width in points of the widest of `texts`; 0 where there is none.
double widestOf(const QStringList& texts, const TextStyle& style, const Theme& theme) {
    double widest = 0;
    for (const QString& text : texts)
        widest = std::max(widest, std::ceil(textWidth({text, style}, theme)));
    return widest / theme.exact(1);
}

/// A symbol and a text that belong together, closer than two items of their row.
void appendLabel(
    std::vector<RowItem>& items, const QString& symbol, const QString& text,
    const TextStyle& style) {
    items.push_back(RowItem::makeSymbol(symbol, style));
    items.back().gapAfter = 4;
    items.push_back(RowItem::text(text, style));
}

} // namespace

RowContent captionRow(const QString& text) {
    return {.items = {RowItem::shrinkingText(text, caption())}};
}

RowContent calloutRow(const QString& text) {
    return {.items = {RowItem::shrinkingText(text, {.color = ColorRole::Secondary})}};
}

RowContent headerRow(const QString& age) {
    RowContent row{
        .items =
            {
                RowItem::text(u"Today"_s, {.role = TextRole::Headline}),
                RowItem::space(),
            },
        .alignment = RowContent::Alignment::FirstBaseline,
    };
    if (!age.isEmpty())
        row.items.push_back(RowItem::text(age, caption()));
    return row;
}

RowContent sectionHeaderRow(
    const QString& title, const QString& symbol, std::optional<qint64> badge,
    const std::optional<QString>& summary, double rotation) {
    TextStyle titleStyle = caption();
    titleStyle.weight = QFont::DemiBold;
    RowContent row{
        .items = {
            RowItem::makeSymbol(symbol, caption()),
            RowItem::text(title.toUpper(), titleStyle),
        }};
    if (badge)
        row.items.push_back(RowItem::badge(QString::number(*badge)));
    row.items.push_back(RowItem::space());
    if (summary)
        row.items.push_back(RowItem::shrinkingText(*summary, caption()));
    RowItem chevron = RowItem::makeSymbol(
        u"chevron.down"_s,
        {.role = TextRole::Caption2, .color = ColorRole::Tertiary, .weight = QFont::DemiBold});
    chevron.width = chevronWidth;
    chevron.rotation = rotation;
    row.items.push_back(chevron);
    return row;
}

double timeColumn(const QStringList& times, const Theme& theme) {
    return std::max(leastTimeColumn, widestOf(times, timeStyle(ColorRole::Primary), theme));
}

RowContent eventRow(const BriefEvent& event, const TimeCell& time, bool isNext) {
    RowItem when =
        RowItem::text(time.text, timeStyle(isNext ? ColorRole::Primary : ColorRole::Secondary));
    when.width = time.column;
    RowItem what =
        RowItem::shrinkingText(event.title, {.weight = isNext ? QFont::DemiBold : QFont::Normal});
    if (event.location && !event.location->isEmpty())
        what.lines.push_back(
            {beginning(*event.location, longestLine),
             {.role = TextRole::Caption2, .color = ColorRole::Secondary}});
    return {
        .items = {when, what, RowItem::space()},
        .spacing = 8,
        .alignment = RowContent::Alignment::FirstBaseline,
    };
}

RowContent habitRow(const Habit& habit) {
    const TextStyle doneStyle{.color = ColorRole::Green};
    const TextStyle openStyle{.color = ColorRole::Secondary};
    const TextStyle nameStyle{
        .color = habit.done ? ColorRole::Secondary : ColorRole::Primary,
        .struckThrough = habit.done,
    };
    RowContent row{
        .items = {
            habit.done ? RowItem::makeSymbol(u"checkmark.circle.fill"_s, doneStyle)
                       : RowItem::makeSymbol(u"circle"_s, openStyle),
            RowItem::shrinkingText(habit.name, nameStyle),
            RowItem::space(),
        }};
    if (const auto count = PanelTexts::countLabel(habit)) {
        TextStyle countStyle = caption();
        countStyle.equalWidthDigits = true;
        row.items.push_back(RowItem::text(*count, countStyle));
    }
    if (const auto streak = PanelTexts::streakLabel(habit))
        row.items.push_back(RowItem::text(*streak, caption()));
    return row;
}

RowContent choreRow(const Chore& chore) {
    const ColorRole overdueColor =
        PanelTexts::isOverdue(chore) ? ColorRole::Orange : ColorRole::Secondary;
    return {
        .items = {
            RowItem::makeSymbol(u"circle"_s, {.color = ColorRole::Secondary}),
            RowItem::shrinkingText(chore.name, {}),
            RowItem::space(),
            RowItem::text(PanelTexts::overdueLabel(chore), caption(overdueColor)),
        }};
}

RowContent focusRow(const Briefing& briefing) {
    RowContent row{.items = {}, .spacing = 16};
    const Habits& habits = briefing.habits;
    if (habits.total >= 1) {
        const bool allDone = habits.done == habits.total;
        appendLabel(
            row.items, u"flame"_s, PanelTexts::habitsSummary(habits),
            caption(allDone ? ColorRole::Green : ColorRole::Secondary));
    }
    if (const auto share = briefing.focus.productiveShare)
        appendLabel(
            row.items, u"brain.head.profile"_s, Formatters::percent(*share) + u" focus"_s,
            caption());
    row.items.push_back(RowItem::space());
    return row;
}

RowContent spendingTotalRow(const Spending& spending, const QLocale& locale) {
    return {
        .items =
            {
                RowItem::text(
                    Formatters::currency(spending.mtd, locale), {.role = TextRole::Title3,
                                                                 .weight = QFont::DemiBold,
                                                                 .equalWidthDigits = true}),
                RowItem::text(u"MTD"_s, {.role = TextRole::Caption, .color = ColorRole::Secondary}),
                RowItem::space(),
            },
        .alignment = RowContent::Alignment::FirstBaseline,
    };
}

RowContent spendingPaceRow(const Spending& spending) {
    const double delta = spending.deltaFraction.value_or(0);
    const ColorRole color = delta > 0 ? ColorRole::Orange : ColorRole::Secondary;
    RowContent row{.items = {}, .spacing = paceGap};
    if (SpendingTexts::paceLabel(spending))
        row.items.push_back(RowItem::makeSymbol(
            delta > 0 ? u"arrow.up.right"_s : u"arrow.down.right"_s,
            {.role = TextRole::Caption2, .color = color, .weight = QFont::Bold}));
    row.items.push_back(RowItem::shrinkingText(
        SpendingTexts::pace(spending), {.role = TextRole::Caption, .color = color}));
    return row;
}

BucketColumns bucketColumns(std::span<const Bucket> buckets, const Theme& theme) {
    BucketColumns columns;
    QStringList icons;
    for (const Bucket& bucket : buckets) {
        icons += bucket.icon;
        columns.bars = columns.bars || parseCssColor(bucket.color);
    }
    columns.icons = std::min(widestOf(icons, caption(), theme), widestIconColumn);
    return columns;
}

RowContent bucketRow(const Bucket& bucket, const BucketColumns& columns, const QLocale& locale) {
    RowContent row;
    if (const auto color = parseCssColor(bucket.color)) {
        row.items.push_back(RowItem::bar(
            QColor::fromRgbF(float(color->red), float(color->green), float(color->blue)),
            barWidth));
    } else if (columns.bars) {
        row.items.push_back(RowItem::bar(Qt::transparent, barWidth));
    }
    // Both come from the producer: neither may push the amount out of the row.
    RowItem icon = RowItem::shrinkingText(bucket.icon, {.role = TextRole::Caption});
    icon.width = columns.icons;
    row.items.push_back(icon);
    row.items.push_back(RowItem::shrinkingText(bucket.label, {}));
    row.items.push_back(RowItem::space(leastGapBeforeAmount));
    row.items.push_back(RowItem::text(
        Formatters::currency(bucket.amount, locale),
        {.color = ColorRole::Secondary, .equalWidthDigits = true}));
    return row;
}

RowContent spendingAsOfRow(const Spending& spending) {
    const TextStyle style{.role = TextRole::Caption2, .color = ColorRole::Secondary};
    return {
        .items =
            {
                RowItem::makeSymbol(u"clock.arrow.circlepath"_s, style),
                RowItem::shrinkingText(SpendingTexts::asOf(spending), style),
            },
        .spacing = 4,
    };
}

} // namespace lumora
