#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

QImage render(const QString& name, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer renderer(QStringLiteral(LUMORA_ICON_FOLDER "/%1.svg").arg(name));
    EXPECT_TRUE(renderer.isValid());
    renderer.render(&painter);
    return image;
}

/// The mean difference of two rows of an image, 0 to 255.
double rowDifference(const QImage& image, int a, int b) {
    double sum = 0;
    for (int x = 0; x < image.width(); ++x)
        sum += std::abs(qGray(image.pixel(x, a)) - qGray(image.pixel(x, b)));
    return sum / image.width();
}

} // namespace

TEST(ApplicationIcon, DrawsARoundedPage) {
    const QImage icon = render(u"com.lumora.app"_s, 128);
    EXPECT_EQ(qAlpha(icon.pixel(64, 64)), 255);
    for (const QPoint corner : {QPoint(9, 15), QPoint(118, 15), QPoint(9, 118), QPoint(118, 118)})
        EXPECT_EQ(qAlpha(icon.pixel(corner)), 0) << corner.x() << "," << corner.y();
}

TEST(ApplicationIcon, KeepsItsHorizonWhenSmall) {
    const QImage icon = render(u"com.lumora.app"_s, 16);
    EXPECT_GT(rowDifference(icon, 10, 11), 20);
}

TEST(ApplicationIcon, TheSymbolicOneIsOfOneColour) {
    const QImage icon =
        render(u"com.lumora.app-symbolic"_s, 64).convertToFormat(QImage::Format_ARGB32);
    int solid = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            if (qAlpha(icon.pixel(x, y)) != 255)
                continue;
            ++solid;
            ASSERT_EQ(icon.pixel(x, y), qRgb(0x2e, 0x34, 0x36));
        }
    }
    EXPECT_GT(solid, 64 * 64 / 10);
    EXPECT_LT(solid, 64 * 64 / 2);
}
