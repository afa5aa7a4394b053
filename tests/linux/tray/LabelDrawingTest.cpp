#include "linux/tray/LabelDrawing.h"

#include <QFontMetricsF>

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

/// Where something is drawn in `image`.
QRect inked(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 60)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

QImage square(const QString& text, int pixels) {
    return drawTextInSquare(text, pixels, Qt::white, QFont());
}

QImage wide(const QString& text, int height) {
    return drawSymbolAndText(u"calendar"_s, text, height, Qt::white, QFont());
}

TEST(LabelDrawing, ShortTextsFillTheirSquare) {
    for (const QString& text : {u"12m"_s, u"100%"_s, u"2/5"_s, u"888m"_s}) {
        for (const int pixels : {16, 22, 24, 32, 44, 48}) {
            const QImage image = square(text, pixels);
            ASSERT_EQ(image.size(), QSize(pixels, pixels));
            const QRect ink = inked(image);
            EXPECT_GE(ink.width(), pixels * 7 / 10) << text.toStdString() << " at " << pixels;
            EXPECT_GE(ink.height(), pixels * 35 / 100) << text.toStdString() << " at " << pixels;
            // Nothing is cut off: the outermost columns hold no more than the edge of a stem.
            EXPECT_LE(std::abs(ink.left() - (pixels - 1 - ink.right())), 2 + pixels / 10)
                << text.toStdString() << " at " << pixels;
            EXPECT_LE(std::abs(ink.top() - (pixels - 1 - ink.bottom())), 2 + pixels / 10)
                << text.toStdString() << " at " << pixels;
        }
    }
}

TEST(LabelDrawing, ASingleDigitIsNotPressedTogether) {
    const QRect ink = inked(square(u"3"_s, 44));
    EXPECT_GE(ink.height(), 44 * 55 / 100);
    EXPECT_LE(ink.height(), 44 * 70 / 100);
    EXPECT_LT(ink.width(), ink.height());
}

TEST(LabelDrawing, SymbolAndTextStandSideBySide) {
    const QImage image = wide(u"Standup · 12m"_s, 22);
    ASSERT_EQ(image.height(), 22);
    const QRect symbol = inked(image.copy(0, 0, 22, 22));
    EXPECT_GE(symbol.width(), 12);
    const QRect gap = inked(image.copy(22, 0, 3, 22));
    EXPECT_TRUE(gap.isEmpty());
    const QRect text = inked(image.copy(22, 0, image.width() - 22, 22));
    EXPECT_GE(text.width(), 60);
    EXPECT_GE(text.height(), 9);
    EXPECT_GE(text.top(), 2);
    EXPECT_LE(text.bottom(), 20);
}

TEST(LabelDrawing, TextsFromRightToLeftStandThereToo) {
    const QImage image = wide(u"\u05e4\u05d2\u05d9\u05e9\u05d4 · 12m"_s, 22);
    const QRect text = inked(image.copy(22, 0, image.width() - 22, 22));
    EXPECT_GE(text.width(), image.width() - 22 - 10);
}

TEST(LabelDrawing, AllDigitsCountAsOneOfThem) {
    EXPECT_EQ(withEveryDigit(u"Standup 2 · 109m"_s, u'8'), u"Standup 8 · 888m"_s);
    EXPECT_EQ(withEveryDigit(u"\u0661m"_s, u'8'), u"\u0661m"_s); // a text's own are no countdown
}

TEST(LabelDrawing, AMinuteThatPassesMovesNothing) {
    const int width = wide(u"Standup · 12m"_s, 22).width();
    for (const QString& text : {u"Standup · 11m"_s, u"Standup · 18m"_s, u"Standup · 20m"_s})
        EXPECT_EQ(wide(text, 22).width(), width) << text.toStdString();
    EXPECT_LT(wide(u"Standup · 9m"_s, 22).width(), width);
}

TEST(LabelDrawing, WhatStandsBehindTheDigitsStaysWhereItIs) {
    const QFont inter(u"Inter"_s); // a 1 is narrow there
    ASSERT_LT(
        QFontMetricsF(inter).horizontalAdvance(u'1'), QFontMetricsF(inter).horizontalAdvance(u'0'));
    const auto tail = [](const QImage& image, int width) {
        return image.copy(image.width() - width, 0, width, image.height());
    };
    const auto both = [&](const QString& text) {
        return tail(drawSymbolAndText(u"calendar"_s, text, 44, Qt::white, inter), 24);
    };
    EXPECT_EQ(both(u"Standup · 11m"_s), both(u"Standup · 20m"_s));
    EXPECT_NE(both(u"Standup · 11m"_s), both(u"Standup · 11h"_s));
    const auto squares = [&](const QString& text) {
        return tail(drawTextInSquare(text, 48, Qt::white, inter), 18);
    };
    EXPECT_EQ(squares(u"11m"_s), squares(u"20m"_s));
    EXPECT_NE(squares(u"11m"_s), squares(u"11h"_s));
}

TEST(LabelDrawing, ADigitStandsInTheMiddleOfItsPlace) {
    const QRect ink = inked(drawTextInSquare(u"1"_s, 48, Qt::white, QFont(u"Inter"_s)));
    EXPECT_NEAR(ink.center().x(), 23.5, 4);
}

TEST(LabelDrawing, TwiceTheHeightIsTwiceTheWidth) {
    const int once = wide(u"Standup · 12m"_s, 22).width();
    EXPECT_NEAR(wide(u"Standup · 12m"_s, 44).width(), 2 * once, 12);
}

} // namespace
} // namespace lumora
