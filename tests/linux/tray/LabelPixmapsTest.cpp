#include "linux/tray/LabelPixmaps.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using testing::AllOf;
using testing::Each;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;
using testing::Not;

namespace lumora {
namespace {

/// How light the pixels are that the symbol covers, each from 0 to 255.
QList<int> lightnessOf(SymbolTone tone) {
    const QImage image =
        LabelPixmaps({.symbol = u"calendar"_s, .text = {}, .tone = tone, .font = {}})
            .icon()
            .pixmap(48)
            .toImage()
            .convertToFormat(QImage::Format_ARGB32);
    QList<int> result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const QColor color = image.pixelColor(x, y); color.alpha() > 200)
                result += color.lightness();
        }
    }
    return result;
}

TEST(LabelPixmaps, StandOutFromTheirBar) {
    EXPECT_THAT(lightnessOf(SymbolTone::Light), AllOf(Not(IsEmpty()), Each(Gt(230))));
    EXPECT_THAT(lightnessOf(SymbolTone::Dark), AllOf(Not(IsEmpty()), Each(Lt(64))));
}

TEST(LabelPixmaps, SymbolAndTextAreAsHighAsTheHostHasThem) {
    for (const int height : {22, 24}) {
        const LabelPixmaps drawn(
            {.symbol = u"calendar"_s, .text = u"12m"_s, .font = {}, .height = height, .scale = 2});
        ASSERT_EQ(drawn.forStatusItem().size(), 1);
        EXPECT_EQ(drawn.forStatusItem().first().height, 2 * height);
        EXPECT_EQ(drawn.room().height(), height);
    }
}

} // namespace
} // namespace lumora
