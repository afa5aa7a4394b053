#include "linux/tray/TrayTypes.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(IconPixmap, PutsAlphaFirstWhateverTheMachine) {
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(0x11, 0x22, 0x33, 0xff));
    image.setPixel(1, 0, qRgba(0x44, 0x55, 0x66, 0x77));

    const IconPixmap pixmap = IconPixmap::fromImage(image);

    EXPECT_EQ(pixmap.width, 2);
    EXPECT_EQ(pixmap.height, 1);
    EXPECT_EQ(
        pixmap.bytes, QByteArray::fromHex("ff112233"
                                          "77445566"));
}

TEST(IconPixmap, UndoesTheMultiplicationByAlpha) {
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(255, 0, 0, 51));

    EXPECT_EQ(IconPixmap::fromImage(image).bytes, QByteArray::fromHex("33ff0000"));
}

TEST(IconPixmap, HasNoPaddingBetweenRows) {
    QImage image(3, 2, QImage::Format_Alpha8); // rows padded to four bytes
    image.fill(0xff);

    EXPECT_EQ(IconPixmap::fromImage(image).bytes.size(), 3 * 2 * 4);
}

TEST(IconPixmap, OfNothingIsEmpty) {
    EXPECT_EQ(IconPixmap::fromImage(QImage()), IconPixmap());
}

} // namespace
} // namespace lumora
