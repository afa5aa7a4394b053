#include "ui/rows/RowLayout.h"

#include "support/ViewHarness.h"
#include "ui/rows/TextDrawing.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString longText = u"A title that is far too long for the line it has to stand on"_s;

QFont fontNamed(const QString& family) {
    QFont font(family);
    font.setPointSizeF(13);
    return font;
}

RowContent rowOf(std::vector<RowItem> items) {
    return {.items = std::move(items)};
}

} // namespace

TEST(RowLayout, SpacesItemsAndGivesTheRestToTheSpace) {
    const RowContent row = rowOf(
        {RowItem::spinner(0), RowItem::text(u"Read"_s, {}), RowItem::space(),
         RowItem::makeSymbol(u"circle"_s, {})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 300);
    ASSERT_EQ(geometry.items.size(), 4U);
    EXPECT_EQ(geometry.items[0].size(), QSizeF(14, 14));
    EXPECT_DOUBLE_EQ(geometry.items[1].left(), 14 + 6);
    EXPECT_DOUBLE_EQ(geometry.items[2].left(), geometry.items[1].right() + 6);
    EXPECT_DOUBLE_EQ(geometry.items[3].left(), geometry.items[2].right() + 6);
    EXPECT_DOUBLE_EQ(geometry.items[3].right(), 300);
}

TEST(RowLayout, CentresItemsOfDifferentHeight) {
    const RowContent row = rowOf(
        {RowItem::spinner(0), RowItem::text(u"Read"_s, {.role = TextRole::Title3}),
         RowItem::text(u"4"_s, {.role = TextRole::Caption})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 300);
    for (const QRectF& item : geometry.items)
        EXPECT_DOUBLE_EQ(item.center().y(), geometry.height / 2);
}

TEST(RowLayout, PutsTextsOfDifferentSizeOnOneBaseline) {
    RowContent row = rowOf(
        {RowItem::text(u"9:05 am"_s, {.role = TextRole::Caption}),
         RowItem::text(u"Standup"_s, {.role = TextRole::Title3})});
    row.alignment = RowContent::Alignment::FirstBaseline;
    const Theme theme = plainTheme();
    const RowGeometry geometry = layOutRow(row, theme, 300);
    const auto baseline = [&](std::size_t item, TextRole role) {
        return geometry.items[item].top() + QFontMetricsF(theme.font(role)).ascent();
    };
    EXPECT_DOUBLE_EQ(baseline(0, TextRole::Caption), geometry.baseline);
    EXPECT_DOUBLE_EQ(baseline(1, TextRole::Title3), geometry.baseline);
    EXPECT_GT(geometry.items[0].top(), geometry.items[1].top());
}

TEST(RowLayout, LongTextGivesWayAndWhatFollowsStaysInTheRow) {
    const RowContent row = rowOf(
        {RowItem::shrinkingText(longText + longText, {}), RowItem::space(8),
         RowItem::text(u"3d over"_s, {})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 200);
    EXPECT_DOUBLE_EQ(geometry.items[1].width(), 8);
    EXPECT_DOUBLE_EQ(geometry.items[2].right(), 200);
    EXPECT_GT(geometry.items[0].width(), 50);
}

TEST(RowLayout, TheLastShrinkingTextGivesWayFirst) {
    const RowContent row = rowOf(
        {RowItem::shrinkingText(u"🍎"_s, {}), RowItem::shrinkingText(longText, {}),
         RowItem::space(), RowItem::text(u"$12"_s, {})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 200);
    EXPECT_DOUBLE_EQ(geometry.items[0].width(), std::ceil(textWidth({u"🍎"_s, {}}, plainTheme())));
    EXPECT_DOUBLE_EQ(geometry.items[3].right(), 200);
}

TEST(RowLayout, ABarIsAsTallAsItsRow) {
    const RowContent row = rowOf({RowItem::bar(Qt::red, 2.5), RowItem::text(u"Food"_s, {})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 200);
    EXPECT_EQ(geometry.items[0], QRectF(0, 0, 2.5, geometry.height));
    EXPECT_GT(geometry.height, 10);
}

TEST(RowLayout, ABadgeIsPaddedFiveByOne) {
    const RowContent row = rowOf({RowItem::badge(u"7"_s)});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 200);
    const TextLine& number = row.items.front().lines.front();
    const QFontMetricsF metrics(plainTheme().font(TextRole::Caption2, QFont::Bold));
    EXPECT_EQ(number.style.weight, QFont::Bold);
    EXPECT_DOUBLE_EQ(geometry.items[0].width(), std::ceil(textWidth(number, plainTheme())) + 2 * 5);
    EXPECT_DOUBLE_EQ(geometry.items[0].height(), std::ceil(metrics.height() + 2 * 1));
}

TEST(RowLayout, AnEmptyRowHasNoHeight) {
    EXPECT_DOUBLE_EQ(layOutRow(rowOf({RowItem::space()}), plainTheme(), 200).height, 0);
    EXPECT_DOUBLE_EQ(layOutRow({}, plainTheme(), 200).height, 0);
}

TEST(RowLayout, LineBreaksMakeNoRowTaller) {
    const auto geometryOf = [](const QString& text) {
        return layOutRow(rowOf({RowItem::text(text, {})}), plainTheme(), 300);
    };
    EXPECT_EQ(geometryOf(u"a\nb"_s), geometryOf(u"a b"_s));
    EXPECT_EQ(geometryOf(u"a\r\nb\tc\u2028d\u2029e"_s), geometryOf(u"a  b c d e"_s));
}

TEST(TextDrawing, LineBreaksAreDrawnAsSpaces) {
    const auto imageOf = [](const QString& text) {
        const ThemeSource themes(plainTheme());
        PaintedRow row(themes, {});
        row.setContent(rowOf({RowItem::shrinkingText(text, {})}));
        row.resize(100, row.sizeHint().height());
        return painted(row);
    };
    EXPECT_EQ(imageOf(u"a\nb"_s), imageOf(u"a b"_s));
    EXPECT_EQ(imageOf(u"first\nsecond "_s + longText), imageOf(u"first second "_s + longText));
    EXPECT_NE(imageOf(u"a b"_s), imageOf(u"ab"_s));
}

TEST(TextDrawing, CutsAtTheEndWithAnEllipsis) {
    const Theme theme = plainTheme();
    const TextLine line{longText, {}};
    const TextLine cut = elidedLine(line, theme, 100);
    EXPECT_TRUE(cut.text.endsWith(u'…'));
    EXPECT_TRUE(longText.startsWith(cut.text.chopped(1)));
    EXPECT_GT(cut.text.size(), 3);
    EXPECT_LE(textWidth(cut, theme), 100);
    EXPECT_EQ(elidedLine(line, theme, textWidth(line, theme)), line);
    EXPECT_EQ(elidedLine(line, theme, 0).text, QString());
    EXPECT_EQ(elidedLine(line, theme, -5).text, QString());
}

TEST(TextDrawing, TenKilobytesAreOneLine) {
    const TextLine line{QString(10'240, u'W'), {}};
    EXPECT_LE(textWidth(elidedLine(line, plainTheme(), 200), plainTheme()), 200);
}

TEST(TextDrawing, DigitsHaveEqualWidthWhereAskedFor) {
    // A family whose digits differ in width by themselves, where there is one.
    const Theme theme(ColorScheme::Light, fontNamed(u"Inter"_s));
    const auto widthOf = [&](const QString& text) {
        return textWidth({text, {.equalWidthDigits = true}}, theme);
    };
    EXPECT_DOUBLE_EQ(widthOf(u"1:11 am"_s), widthOf(u"8:08 am"_s));
    EXPECT_DOUBLE_EQ(widthOf(u"$1,111"_s), widthOf(u"$4,096"_s));
    EXPECT_GT(widthOf(u"11"_s), widthOf(u"1"_s));
}

TEST(RowLayout, DistancesGrowWithTheText) {
    RowContent row = rowOf({RowItem::spinner(0), RowItem::text(u"9:05 am"_s, {})});
    row.items[1].width = 58;
    const RowGeometry geometry = layOutRow(row, stillTheme(22), 640);
    EXPECT_EQ(geometry.items[0].size(), QSizeF(28, 28));
    EXPECT_DOUBLE_EQ(geometry.items[1].left(), 28 + 12);
    EXPECT_DOUBLE_EQ(geometry.items[1].width(), 116);
}

TEST(RowLayout, FromTheRightIsTheSamePictureMirrored) {
    const RowContent row = rowOf(
        {RowItem::makeSymbol(u"circle"_s, {}), RowItem::text(u"Read"_s, {}), RowItem::space(),
         RowItem::text(u"2/8"_s, {.role = TextRole::Caption})});
    const RowGeometry left = layOutRow(row, plainTheme(), 300);
    const RowGeometry right = layOutRow(row, plainTheme(), 300, Qt::RightToLeft);
    for (std::size_t i = 0; i < row.items.size(); ++i) {
        EXPECT_DOUBLE_EQ(right.items[i].right(), 300 - left.items[i].left());
        EXPECT_EQ(right.items[i].size(), left.items[i].size());
    }
}

TEST(RowLayout, IsAsHighAsALineOfTextWhereItSaysSo) {
    RowContent row = rowOf({RowItem::makeSymbol(u"power"_s, {.role = TextRole::Caption2})});
    const Theme theme = plainTheme();
    const double alone = layOutRow(row, theme, 20).height;
    row.beside = TextLine{{}, {.role = TextRole::Title3}};
    const RowGeometry geometry = layOutRow(row, theme, 20);
    EXPECT_DOUBLE_EQ(
        geometry.height, std::ceil(QFontMetricsF(theme.font(TextRole::Title3)).height()));
    EXPECT_GT(geometry.height, alone);
    EXPECT_DOUBLE_EQ(geometry.items[0].center().y(), geometry.height / 2);
}

TEST(RowLayout, EvenWhatShouldNotShrinkStaysInTheRow) {
    const RowContent row = rowOf(
        {RowItem::shrinkingText(u"Rent"_s, {}), RowItem::space(8), RowItem::text(longText, {})});
    const RowGeometry geometry = layOutRow(row, plainTheme(), 100);
    EXPECT_DOUBLE_EQ(geometry.items[0].width(), 0);
    EXPECT_DOUBLE_EQ(geometry.items[2].right(), 100);
}

TEST(RowLayout, NamesTheTextsThatAreCut) {
    RowContent row = rowOf(
        {RowItem::text(u"9:05 am"_s, {}), RowItem::shrinkingText(longText, {}), RowItem::space()});
    row.items[1].lines.push_back({u"Room 4"_s, {}});
    EXPECT_EQ(cutTexts(row, plainTheme(), 200), QStringList{longText});
    EXPECT_EQ(cutTexts(row, plainTheme(), 2000), QStringList());
}

TEST(RowLayout, HasRoomForTheFontsThatStandIn) {
    const Theme theme = plainTheme();
    const TextLine latin{u"Standup"_s, {}};
    const TextLine arabic{u"موعد مع الطبيب"_s, {}};
    EXPECT_DOUBLE_EQ(
        lineHeight(latin, theme).whole, QFontMetricsF(theme.font(TextRole::Callout)).height());
    QTextLayout layout(arabic.text, theme.font(TextRole::Callout));
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    EXPECT_GE(lineHeight(arabic, theme).ascent, line.ascent());
    EXPECT_GE(lineHeight(arabic, theme).whole - lineHeight(arabic, theme).ascent, line.descent());
}
