#include "pictures/PictureComparison.h"

#include <QFont>
#include <QPainter>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

const QColor ground(0xfb, 0xfb, 0xfc);
const QColor ink(0x60, 0x60, 0x64);

/// A row with a text and a chevron, the latter turned by `degrees`.
QImage row(const QColor& color = ink, double degrees = 0, QPoint shift = {}) {
    QImage image(200, 30, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(u"Inter"_s);
    font.setPixelSize(11);
    painter.setFont(font);
    painter.setPen(color);
    painter.translate(shift);
    painter.drawText(QPointF(8, 20), u"Water the plants"_s);
    painter.translate(180, 15);
    painter.rotate(degrees);
    painter.setPen(QPen(ink, 1.25));
    painter.drawPolyline(QPolygonF({{-4, -2}, {0, 2}, {4, -2}}));
    return image;
}

QImage withPixel(QImage image, QPoint at, QRgb color) {
    image.setPixel(at, color);
    return image;
}

TEST(PictureComparison, FindsNoneBetweenEqualPictures) {
    EXPECT_TRUE(comparePictures(row(), row()).isNone());
    EXPECT_TRUE(comparePictures(row(), row()).marked.isNull());
}

TEST(PictureComparison, LetsNoiseThrough) {
    QImage noisy = row();
    QRandomGenerator random(1);
    const auto shaken = [&](int channel) {
        return std::clamp(channel + random.bounded(-3, 4), 0, 255);
    };
    for (int y = 0; y < noisy.height(); ++y) {
        for (int x = 0; x < noisy.width(); ++x) {
            const QRgb color = noisy.pixel(x, y);
            noisy.setPixel(
                x, y, qRgb(shaken(qRed(color)), shaken(qGreen(color)), shaken(qBlue(color))));
        }
    }
    EXPECT_TRUE(comparePictures(row(), noisy).isNone());
}

TEST(PictureComparison, FindsATextInASlightlyOtherColor) {
    const QColor other(ink.red() * 115 / 100, ink.green() * 115 / 100, ink.blue() * 115 / 100);
    EXPECT_GT(comparePictures(row(), row(other)).pixels, 20);
}

TEST(PictureComparison, FindsAShiftByOnePixel) {
    EXPECT_GT(comparePictures(row(), row(ink, 0, {1, 0})).pixels, 100);
    EXPECT_GT(comparePictures(row(), row(ink, 0, {0, 1})).pixels, 100);
}

TEST(PictureComparison, FindsAChevronThatDidNotTurn) {
    EXPECT_GT(comparePictures(row(ink, -90), row()).pixels, 5);
}

TEST(PictureComparison, FindsAnotherSize) {
    const PictureDifference difference = comparePictures(row(), row().copy(0, 0, 199, 30));
    EXPECT_FALSE(difference.sameSize);
    EXPECT_FALSE(difference.isNone());
}

TEST(PictureComparison, LetsOnePixelOfAnEdgeThrough) {
    QImage edge(20, 20, QImage::Format_RGB32);
    edge.fill(Qt::white);
    for (int y = 0; y < 20; ++y) {
        edge.setPixel(10, y, qRgb(128, 128, 128));
        for (int x = 11; x < 20; ++x)
            edge.setPixel(x, y, qRgb(0, 0, 0));
    }
    EXPECT_TRUE(comparePictures(edge, withPixel(edge, {10, 7}, qRgb(0, 0, 0))).isNone());
    // Not away from the edge, not in a colour that is not there, and not two side by side.
    EXPECT_EQ(comparePictures(edge, withPixel(edge, {4, 7}, qRgb(0, 0, 0))).pixels, 1);
    EXPECT_EQ(comparePictures(edge, withPixel(edge, {10, 7}, qRgb(200, 0, 0))).pixels, 1);
    const QImage two = withPixel(withPixel(edge, {10, 7}, qRgb(0, 0, 0)), {10, 8}, qRgb(0, 0, 0));
    EXPECT_EQ(comparePictures(edge, two).pixels, 2);
}

TEST(PictureComparison, MarksWhatItFinds) {
    const PictureDifference difference =
        comparePictures(row(), withPixel(row(), {2, 3}, qRgb(0, 0, 0)));
    EXPECT_EQ(difference.pixels, 1);
    EXPECT_EQ(difference.first, QPoint(2, 3));
    EXPECT_EQ(difference.marked.pixel(2, 3), qRgb(255, 0, 0));
    EXPECT_NE(difference.marked.pixel(3, 3), qRgb(255, 0, 0));
}

} // namespace
} // namespace lumora::tests
