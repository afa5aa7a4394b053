#include "pictures/CompressedPng.h"

#include <gtest/gtest.h>

namespace lumora::tests {
namespace {

TEST(CompressedPng, IsReadAsThePictureItWas) {
    QImage picture(3, 2, QImage::Format_RGB32);
    for (int i = 0; i < 6; ++i)
        picture.setPixel(i % 3, i / 3, qRgb(40 * i, 255 - i, 7));
    QImage read;
    ASSERT_TRUE(read.loadFromData(compressedPng(picture), "PNG"));
    EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), picture);
}

} // namespace
} // namespace lumora::tests
