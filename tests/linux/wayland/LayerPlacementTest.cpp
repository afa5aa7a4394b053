#include "linux/wayland/LayerPlacement.h"

#include <gtest/gtest.h>

namespace lumora::tests {
namespace {

using Horizontal = LayerPlacement::Horizontal;
using Vertical = LayerPlacement::Vertical;

const QRect screen(1000, 200, 1280, 800);

TEST(LayerPlacement, TakesBarsToBeWhereThePointerIs) {
    const QSize usable(1280, 770);
    EXPECT_EQ(freeArea(screen, usable, QPoint(2000, 215)), QRect(1000, 230, 1280, 770));
    EXPECT_EQ(freeArea(screen, usable, QPoint(2000, 990)), QRect(1000, 200, 1280, 770));
}

TEST(LayerPlacement, KnowsBarsAtTheSides) {
    const QSize usable(1230, 800);
    EXPECT_EQ(freeArea(screen, usable, QPoint(1010, 900)), QRect(1050, 200, 1230, 800));
    EXPECT_EQ(freeArea(screen, usable, QPoint(2270, 900)), QRect(1000, 200, 1230, 800));
}

TEST(LayerPlacement, SplitsTheScreenInTheMiddle) {
    const QSize usable(1230, 770);
    EXPECT_EQ(freeArea(screen, usable, QPoint(1639, 599)), QRect(1050, 230, 1230, 770));
    EXPECT_EQ(freeArea(screen, usable, QPoint(1640, 600)), QRect(1000, 200, 1230, 770));
}

TEST(LayerPlacement, HasNoMoreRoomThanTheScreen) {
    EXPECT_EQ(freeArea(screen, QSize(2000, 2000), screen.topLeft()), screen);
}

TEST(LayerPlacement, HoldsToTheNearerEdges) {
    const QRect available(1000, 230, 1280, 770);
    EXPECT_EQ(
        layerPlacement(QRect(1900, 230, 340, 700), available),
        (LayerPlacement{Horizontal::Right, Vertical::Top, QSize(340, 700), QSize(40, 0)}));
    EXPECT_EQ(
        layerPlacement(QRect(1020, 290, 340, 705), available),
        (LayerPlacement{Horizontal::Left, Vertical::Bottom, QSize(340, 705), QSize(20, 5)}));
}

TEST(LayerPlacement, HoldsToTheTopLeftWhereBothAreAsNear) {
    const QRect available(1000, 230, 1280, 770);
    EXPECT_EQ(
        layerPlacement(available, available),
        (LayerPlacement{Horizontal::Left, Vertical::Top, available.size(), QSize(0, 0)}));
}

TEST(LayerPlacement, PutsPartsWhereTheWindowReallyIs) {
    const QRect available(1000, 230, 1280, 770);
    EXPECT_EQ(
        partArea(QRect(1100, 300, 80, 20), QPoint(1000, 200), QPoint(1930, 230), available),
        QRect(2030, 330, 80, 20));
}

TEST(LayerPlacement, KeepsPartsOnTheFreePartOfTheScreen) {
    const QRect available(1000, 230, 1280, 770);
    const QPoint there(1000, 230);
    EXPECT_EQ(
        partArea(QRect(2270, 990, 80, 20), there, there, available), QRect(2200, 980, 80, 20));
    EXPECT_EQ(partArea(QRect(990, 210, 80, 20), there, there, available), QRect(1000, 230, 80, 20));
    // What is too wide shows its beginning.
    EXPECT_EQ(
        partArea(QRect(1500, 300, 2000, 20), there, there, available), QRect(1000, 300, 2000, 20));
}

} // namespace
} // namespace lumora::tests
