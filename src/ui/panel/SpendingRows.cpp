#include "ui/panel/SpendingRows.h"

#include "briefing/CssColor.h"
#include "texts/Formatters.h"
#include "texts/SpendingTexts.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr double barWidth = 2.5;
constexpr double paceGap = 4;
constexpr double leastGapBeforeAmount = 8;

} // namespace

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

RowContent bucketRow(const Bucket& bucket, const QLocale& locale) {
    RowContent row;
    if (const auto color = parseCssColor(bucket.color)) {
        row.items.push_back(RowItem::bar(
            QColor::fromRgbF(float(color->red), float(color->green), float(color->blue)),
            barWidth));
    }
    // Both come from the producer: neither may push the amount out of the row.
    row.items.push_back(RowItem::shrinkingText(bucket.icon, {.role = TextRole::Caption}));
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
