#include "symbols/SymbolRenderer.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The symbols that the label and the panel ask for by name.
const QStringList names{
    u"arrow.clockwise"_s,
    u"arrow.down.right"_s,
    u"arrow.up.right"_s,
    u"brain.head.profile"_s,
    u"calendar"_s,
    u"calendar.badge.clock"_s,
    u"calendar.badge.exclamationmark"_s,
    u"checklist"_s,
    u"checkmark.circle"_s,
    u"checkmark.circle.fill"_s,
    u"chevron.down"_s,
    u"circle"_s,
    u"clock.arrow.circlepath"_s,
    u"creditcard"_s,
    u"exclamationmark.triangle"_s,
    u"eye"_s,
    u"eye.slash"_s,
    u"flame"_s,
    u"power"_s,
    u"record.circle"_s,
    u"return"_s,
    u"tray.and.arrow.down"_s,
    u"video.fill"_s,
};

/// The sizes that the panel's fonts and status areas ask for, in device pixels.
constexpr int sizes[] = {11, 13, 14, 16, 20, 22, 24, 32, 48, 64};

/// The sum of all coverage, in fully covered pixels.
double ink(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    return sum;
}

/// How many pixels are all but fully covered, of which a blurred drawing has next to none.
int solidPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) >= 240 ? 1 : 0;
    return count;
}

class Symbol : public ::testing::TestWithParam<QString> {};

std::string testName(const ::testing::TestParamInfo<QString>& info) {
    return QString(info.param).replace(u'.', u'_').toStdString();
}

} // namespace

TEST_P(Symbol, HasADrawing) {
    EXPECT_TRUE(QFile::exists(u":/symbols/%1.svg"_s.arg(GetParam())));
}

TEST_P(Symbol, DrawsAtEverySize) {
    for (const int size : sizes) {
        const QImage image = renderSymbol(GetParam(), size, Qt::black);
        ASSERT_EQ(image.size(), QSize(size, size));
        const double share = ink(image) / (size * size);
        EXPECT_GT(share, 0.04) << size;
        EXPECT_LT(share, 0.60) << size;
    }
}

TEST_P(Symbol, HasSolidStrokesAtTheSmallestSize) {
    EXPECT_GE(solidPixels(renderSymbol(GetParam(), 16, Qt::black)), 4);
}

TEST_P(Symbol, LeavesTheOutermostPixelsFree) {
    // A stroke that touches the edge of the grid would be cut off at some size.
    const int size = 160;
    const QImage image = renderSymbol(GetParam(), size, Qt::black);
    for (int i = 0; i < size; ++i) {
        for (const QPoint edge :
             {QPoint(i, 0), QPoint(i, size - 1), QPoint(0, i), QPoint(size - 1, i)})
            ASSERT_EQ(qAlpha(image.pixel(edge)), 0) << edge.x() << "," << edge.y();
    }
}

TEST_P(Symbol, TakesExactlyTheTintGiven) {
    const QColor tint(0x6c, 0xb0, 0xff);
    const QImage image = renderSymbol(GetParam(), 32, tint);
    bool sawTint = false;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 255)
                continue;
            sawTint = true;
            ASSERT_EQ(image.pixel(x, y), tint.rgba()) << x << "," << y;
        }
    }
    EXPECT_TRUE(sawTint);
}

TEST_P(Symbol, KeepsItsShapeWhateverTheTint) {
    const auto coverage = [](const QColor& tint) {
        return renderSymbol(GetParam(), 32, tint).convertToFormat(QImage::Format_Alpha8);
    };
    EXPECT_EQ(coverage(Qt::black), coverage(Qt::white));
}

TEST_P(Symbol, DiffersFromTheOthers) {
    const QImage mine = renderSymbol(GetParam(), 16, Qt::black);
    for (const QString& other : names) {
        if (other == GetParam())
            continue;
        EXPECT_NE(mine, renderSymbol(other, 16, Qt::black)) << qPrintable(other);
    }
}

TEST_P(Symbol, IsDrawnOnTheCommonGridWithTheCommonStroke) {
    QFile file(u":/symbols/%1.svg"_s.arg(GetParam()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    ASSERT_TRUE(xml.readNextStartElement());
    EXPECT_EQ(xml.attributes().value(u"viewBox"_s), u"0 0 16 16"_s);
    EXPECT_EQ(xml.attributes().value(u"stroke-width"_s), u"1.25"_s);
    while (xml.readNextStartElement()) {
        EXPECT_FALSE(xml.attributes().hasAttribute(u"stroke-width"_s));
        xml.skipCurrentElement();
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
}

INSTANTIATE_TEST_SUITE_P(All, Symbol, ::testing::ValuesIn(names), testName);

TEST(SymbolRenderer, EveryDrawingIsTested) {
    for (const QString& file : QDir(u":/symbols"_s).entryList(QDir::Files))
        EXPECT_TRUE(names.contains(file.chopped(4))) << qPrintable(file);
}

TEST(SymbolRenderer, AnUnknownNameDrawsTheCalendar) {
    const QImage calendar = renderSymbol(u"calendar"_s, 24, Qt::black);
    EXPECT_EQ(renderSymbol(u"no.such.symbol"_s, 24, Qt::black), calendar);
    EXPECT_EQ(renderSymbol({}, 24, Qt::black), calendar);
    EXPECT_EQ(renderSymbol(u"../symbols/power.svg"_s, 24, Qt::black), calendar);
}

TEST(SymbolRenderer, ATranslucentTintStaysTranslucent) {
    QColor tint(Qt::black);
    tint.setAlphaF(0.5F);
    const QImage image = renderSymbol(u"checkmark.circle.fill"_s, 64, tint);
    EXPECT_NEAR(qAlpha(image.pixel(32, 8)), 128, 1);
}

TEST(SymbolRenderer, TheTwoPaceArrowsMirrorEachOther) {
    // They take each other's place in one row: a difference in weight or position would show.
    const QImage up = renderSymbol(u"arrow.up.right"_s, 64, Qt::black).mirrored(false, true);
    const QImage down = renderSymbol(u"arrow.down.right"_s, 64, Qt::black);
    EXPECT_NEAR(ink(up), ink(down), 1);
    for (int y = 0; y < up.height(); ++y)
        for (int x = 0; x < up.width(); ++x)
            ASSERT_NEAR(qAlpha(up.pixel(x, y)), qAlpha(down.pixel(x, y)), 32) << x << "," << y;
}
