#include "ui/window/PlacementScreens.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora::tests {
namespace {

constexpr QSize panelSize(320, 500);

struct PlacementCase {
    std::string name;
    QPoint anchor;
    PlacementScreen screen;
    QSize size;
    int gap;
    PanelPlacement expected;
};

class PlacePanel : public testing::TestWithParam<PlacementCase> {};

TEST_P(PlacePanel, AtTheBar) {
    const auto& [name, anchor, screen, size, gap, expected] = GetParam();
    const PanelPlacement placement = placePanel(anchor, screen, size, gap);
    EXPECT_EQ(placement.panel, expected.panel)
        << placement.panel.x() << ' ' << placement.panel.y() << ' ' << placement.panel.width()
        << ' ' << placement.panel.height();
    EXPECT_EQ(placement.growth, expected.growth);
    EXPECT_EQ(placement.reach, expected.reach)
        << placement.reach.x() << ' ' << placement.reach.y() << ' ' << placement.reach.width()
        << ' ' << placement.reach.height();
}

constexpr auto down = PanelGrowth::Down;
constexpr auto up = PanelGrowth::Up;

INSTANTIATE_TEST_SUITE_P(
    ReservedBar, PlacePanel,
    testing::Values(
        PlacementCase{
            "UnderATopBar",
            {1000, 9},
            topBar,
            panelSize,
            0,
            {{840, 28, 320, 500}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "UnderATopBarWithAGap",
            {1000, 9},
            topBar,
            panelSize,
            4,
            {{840, 32, 320, 500}, down, {840, 32, 320, 1044}}},
        PlacementCase{
            "AboveABottomBar",
            {1000, 1060},
            bottomBar,
            panelSize,
            0,
            {{840, 536, 320, 500}, up, {840, 0, 320, 1036}}},
        PlacementCase{
            "AboveABottomBarWithAGap",
            {1000, 1060},
            bottomBar,
            panelSize,
            4,
            {{840, 532, 320, 500}, up, {840, 4, 320, 1028}}},
        PlacementCase{
            "ClampedAtTheRight",
            {1910, 9},
            topBar,
            panelSize,
            4,
            {{1596, 32, 320, 500}, down, {1596, 32, 320, 1044}}},
        PlacementCase{
            "ClampedAtTheLeft",
            {80, 9},
            topBar,
            panelSize,
            4,
            {{4, 32, 320, 500}, down, {4, 32, 320, 1044}}},
        PlacementCase{
            "ClampedAtADock",
            {1900, 9},
            screenWith(fullHd, {0, 28, 70, 0}),
            panelSize,
            0,
            {{1530, 28, 320, 500}, down, {1530, 28, 320, 1052}}},
        PlacementCase{
            "AtTheBarThoughPressedInItsMenu",
            {1000, 190},
            topBar,
            panelSize,
            0,
            {{840, 28, 320, 500}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "AtTheBarThoughPressedInAPopUpNearTheSide",
            {1900, 960},
            bottomBar,
            panelSize,
            0,
            {{1600, 536, 320, 500}, up, {1600, 0, 320, 1036}}},
        PlacementCase{
            "AtTheBarUpToThreeHundredBelowIt",
            {1000, 328},
            topBar,
            panelSize,
            0,
            {{840, 28, 320, 500}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "NotAtTheBarFartherFromIt",
            {1000, 329},
            topBar,
            panelSize,
            0,
            {{840, 345, 320, 500}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "AtTheNearerOfTwoBars",
            {200, 100},
            screenWith(fullHd, {70, 28, 0, 0}),
            panelSize,
            0,
            {{70, 28, 320, 500}, down, {70, 28, 320, 1052}}},
        PlacementCase{
            "BottomBarOfTwo",
            {1000, 1070},
            screenWith(fullHd, {0, 28, 0, 44}),
            panelSize,
            0,
            {{840, 536, 320, 500}, up, {840, 28, 320, 1008}}},
        PlacementCase{
            "BesideALeftBar",
            {20, 200},
            screenWith(fullHd, {48, 0, 0, 0}),
            panelSize,
            0,
            {{48, 200, 320, 500}, down, {48, 0, 320, 1080}}},
        PlacementCase{
            "BesideALeftBarInTheLowerHalf",
            {20, 1000},
            screenWith(fullHd, {48, 0, 0, 0}),
            panelSize,
            4,
            {{52, 501, 320, 500}, up, {52, 4, 320, 1072}}},
        PlacementCase{
            "BesideARightBarNearItsEnd",
            {1900, 300},
            screenWith(fullHd, {0, 0, 48, 0}),
            {320, 1000},
            0,
            {{1552, 80, 320, 1000}, down, {1552, 0, 320, 1080}}}),
    nameOf<testing::TestParamInfo<PlacementCase>>);

INSTANTIATE_TEST_SUITE_P(
    NoReservedBar, PlacePanel,
    testing::Values(
        PlacementCase{
            "BelowTheItem",
            {1000, 12},
            noBar,
            panelSize,
            0,
            {{840, 28, 320, 500}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "AboveTheItem",
            {1000, 1067},
            noBar,
            panelSize,
            0,
            {{840, 552, 320, 500}, up, {840, 0, 320, 1052}}},
        PlacementCase{
            "ACornerBelongsToTheHorizontalBar",
            {1915, 12},
            noBar,
            panelSize,
            0,
            {{1600, 28, 320, 500}, down, {1600, 28, 320, 1052}}},
        PlacementCase{
            "RightOfAVerticalBar",
            {24, 300},
            noBar,
            panelSize,
            0,
            {{40, 300, 320, 500}, down, {40, 0, 320, 1080}}},
        PlacementCase{
            "LeftOfAVerticalBar",
            {1900, 800},
            noBar,
            panelSize,
            0,
            {{1565, 301, 320, 500}, up, {1565, 0, 320, 1080}}},
        PlacementCase{
            "BelowAPointInTheUpperHalf",
            {1000, 400},
            noBar,
            panelSize,
            0,
            {{840, 416, 320, 500}, down, {840, 0, 320, 1080}}},
        PlacementCase{
            "AboveAPointInTheLowerHalf",
            {1000, 800},
            noBar,
            panelSize,
            0,
            {{840, 285, 320, 500}, up, {840, 0, 320, 1080}}},
        PlacementCase{
            "AboveAPointInTheMiddle",
            {1000, 540},
            noBar,
            panelSize,
            0,
            {{840, 25, 320, 500}, up, {840, 0, 320, 1080}}},
        PlacementCase{
            "PushedUpWhereThereIsTooLittleRoomBelow",
            {1000, 500},
            noBar,
            {320, 900},
            0,
            {{840, 180, 320, 900}, down, {840, 0, 320, 1080}}},
        PlacementCase{
            "SecondScreen",
            {2500, 10},
            secondScreen,
            panelSize,
            0,
            {{2340, 26, 320, 500}, down, {2340, 26, 320, 998}}},
        PlacementCase{
            "ScreenLeftOfTheOrigin",
            {-100, 1015},
            screenWith({-1280, 0, 1280, 1024}, {}),
            panelSize,
            0,
            {{-320, 500, 320, 500}, up, {-320, 0, 320, 1000}}}),
    nameOf<testing::TestParamInfo<PlacementCase>>);

INSTANTIATE_TEST_SUITE_P(
    LittleRoom, PlacePanel,
    testing::Values(
        PlacementCase{
            "HigherThanTheWorkAreaUnderATopBar",
            {1000, 9},
            topBar,
            {320, 3000},
            4,
            {{840, 32, 320, 1044}, down, {840, 32, 320, 1044}}},
        PlacementCase{
            "HigherThanTheWorkAreaAboveABottomBar",
            {1000, 1060},
            bottomBar,
            {320, 3000},
            4,
            {{840, 4, 320, 1028}, up, {840, 4, 320, 1028}}},
        PlacementCase{
            "HigherThanTheScreenInTheMiddleOfIt",
            {1000, 700},
            noBar,
            {320, 3000},
            0,
            {{840, 0, 320, 1080}, up, {840, 0, 320, 1080}}},
        PlacementCase{
            "ExactlyAsHighAsTheWorkArea",
            {1000, 9},
            topBar,
            {320, 1052},
            0,
            {{840, 28, 320, 1052}, down, {840, 28, 320, 1052}}},
        PlacementCase{
            "WiderThanTheScreen",
            {100, 5},
            screenWith({0, 0, 240, 400}, {0, 20, 0, 0}),
            panelSize,
            0,
            {{0, 20, 320, 380}, down, {0, 20, 320, 380}}},
        PlacementCase{
            "NothingToShow",
            {1000, 9},
            topBar,
            {320, 0},
            0,
            {{840, 28, 320, 0}, down, {840, 28, 320, 1052}}}),
    nameOf<testing::TestParamInfo<PlacementCase>>);

} // namespace
} // namespace lumora::tests
