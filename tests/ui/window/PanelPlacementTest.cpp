#include "ui/window/PanelPlacement.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace lumora {

void PrintTo(const PanelAnchor& anchor, std::ostream* out) {
    *out << '(' << anchor.point.x() << ", " << anchor.point.y() << ") on screen " << anchor.screen
         << (anchor.known ? ", known" : ", guessed");
}

} // namespace lumora

namespace lumora::tests {
namespace {

constexpr QSize panelSize(320, 500);
const QRect fullHd(0, 0, 1920, 1080);

PlacementScreen screenWith(const QRect& geometry, const QMargins& bars, double scale = 1) {
    return {.geometry = geometry, .available = geometry.marginsRemoved(bars), .scale = scale};
}

const PlacementScreen topBar = screenWith(fullHd, {0, 28, 0, 0});
const PlacementScreen bottomBar = screenWith(fullHd, {0, 0, 0, 44});
const PlacementScreen noBar = screenWith(fullHd, {});
const PlacementScreen secondScreen = screenWith({1920, 0, 1280, 1024}, {});

std::string nameOf(const auto& info) {
    return info.param.name;
}

struct AnchorCase {
    std::string name;
    AnchorEvidence evidence;
    QList<PlacementScreen> screens;
    PanelAnchor expected;
};

class ChooseAnchor : public testing::TestWithParam<AnchorCase> {};

TEST_P(ChooseAnchor, TakesTheBestEvidence) {
    const auto anchor = chooseAnchor(GetParam().evidence, GetParam().screens);
    ASSERT_TRUE(anchor.has_value());
    EXPECT_EQ(*anchor, GetParam().expected);
}

constexpr std::nullopt_t none = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Order, ChooseAnchor,
    testing::Values(
        AnchorCase{
            "PointerBeforeAll",
            {QPoint(1800, 12), QPoint(900, 10), QPoint(100, 10)},
            {topBar},
            {{1800, 12}, 0, true}},
        AnchorCase{
            "PointerInAMenuFarFromTheEdge",
            {QPoint(1700, 200), none, none},
            {topBar},
            {{1700, 200}, 0, true}},
        AnchorCase{
            "PointerBetweenTheScreensIsNothing",
            {QPoint(2000, 1050), QPoint(900, 10), none},
            {topBar, secondScreen},
            {{900, 10}, 0, true}},
        AnchorCase{
            "HostBeforeTheLastAnchor",
            {none, QPoint(900, 10), QPoint(100, 10)},
            {topBar},
            {{900, 10}, 0, true}},
        AnchorCase{"LastAnchor", {none, none, QPoint(100, 10)}, {topBar}, {{100, 10}, 0, true}},
        AnchorCase{
            "LastAnchorOnAScreenThatIsGone",
            {none, none, QPoint(2500, 10)},
            {topBar},
            {{1919, 0}, 0, false}},
        AnchorCase{
            "LastAnchorOnTheSecondScreen",
            {none, none, QPoint(2500, 10)},
            {topBar, secondScreen},
            {{2500, 10}, 1, true}}),
    nameOf<testing::TestParamInfo<AnchorCase>>);

INSTANTIATE_TEST_SUITE_P(
    Host, ChooseAnchor,
    testing::Values(
        AnchorCase{
            "BottomBar", {none, QPoint(1700, 1060), none}, {bottomBar}, {{1700, 1060}, 0, true}},
        AnchorCase{"HiddenBar", {none, QPoint(1700, 1060), none}, {noBar}, {{1700, 1060}, 0, true}},
        AnchorCase{"LeftEdge", {none, QPoint(20, 700), none}, {noBar}, {{20, 700}, 0, true}},
        AnchorCase{"RightEdge", {none, QPoint(1900, 500), none}, {noBar}, {{1900, 500}, 0, true}},
        AnchorCase{
            "ThickReservedBar",
            {none, QPoint(90, 500), none},
            {screenWith(fullHd, {120, 0, 0, 0})},
            {{90, 500}, 0, true}},
        AnchorCase{
            "AsFarFromTheEdgeAsABarIsThick",
            {none, QPoint(900, 64), none},
            {noBar},
            {{900, 64}, 0, true}},
        AnchorCase{
            "FartherFromTheEdgeIsJunk",
            {none, QPoint(900, 65), none},
            {noBar},
            {{1919, 0}, 0, false}},
        AnchorCase{
            "MiddleOfTheScreenIsJunk",
            {none, QPoint(900, 500), none},
            {topBar},
            {{1919, 0}, 0, false}},
        AnchorCase{
            "InsideTheItemIsJunk", {none, QPoint(10, 14), none}, {topBar}, {{1919, 0}, 0, false}},
        AnchorCase{
            "LeftOfTheItemIsJunk", {none, QPoint(0, 25), none}, {topBar}, {{1919, 0}, 0, false}},
        AnchorCase{"OriginIsJunk", {none, QPoint(0, 0), none}, {topBar}, {{1919, 0}, 0, false}},
        AnchorCase{
            "InsideADoubledItemIsJunk",
            {none, QPoint(90, 40), none},
            {screenWith({0, 0, 960, 540}, {0, 28, 0, 0}, 2)},
            {{959, 0}, 0, false}},
        AnchorCase{
            "JunkDoesNotHideTheLastAnchor",
            {none, QPoint(0, 25), QPoint(1500, 9)},
            {topBar},
            {{1500, 9}, 0, true}},
        AnchorCase{
            "OutsideOfEveryScreenIsJunk",
            {none, QPoint(-5, 3000), none},
            {topBar},
            {{1919, 0}, 0, false}},
        AnchorCase{
            "CornerOfTheSecondScreenIsGood",
            {none, QPoint(1930, 14), none},
            {topBar, secondScreen},
            {{1930, 14}, 1, true}}),
    nameOf<testing::TestParamInfo<AnchorCase>>);

INSTANTIATE_TEST_SUITE_P(
    Scale, ChooseAnchor,
    testing::Values(
        AnchorCase{
            "OneAndAHalf",
            {none, QPoint(1800, 21), none},
            {screenWith({0, 0, 1280, 720}, {0, 28, 0, 0}, 1.5)},
            {{1200, 14}, 0, true}},
        AnchorCase{
            "LastPixelOfAScaledScreen",
            {none, QPoint(1919, 1079), none},
            {screenWith({0, 0, 1280, 720}, {}, 1.5)},
            {{1279, 719}, 0, true}},
        AnchorCase{
            "DoubledSecondScreenKeepsItsOriginInPixels",
            {none, QPoint(1920 + 2400, 20), none},
            {noBar, screenWith({1920, 0, 1920, 1080}, {}, 2)},
            {{1920 + 1200, 10}, 1, true}},
        AnchorCase{
            "ThePointerIsInPointsAlready",
            {QPoint(1200, 14), none, none},
            {screenWith({0, 0, 1280, 720}, {0, 28, 0, 0}, 1.5)},
            {{1200, 14}, 0, true}}),
    nameOf<testing::TestParamInfo<AnchorCase>>);

INSTANTIATE_TEST_SUITE_P(
    NothingKnown, ChooseAnchor,
    testing::Values(
        AnchorCase{"NoBar", {}, {noBar}, {{1919, 0}, 0, false}},
        AnchorCase{"TopBar", {}, {topBar}, {{1919, 0}, 0, false}},
        AnchorCase{"BottomBar", {}, {bottomBar}, {{1919, 1079}, 0, false}},
        AnchorCase{
            "TopBarAndDock", {}, {screenWith(fullHd, {0, 28, 0, 60})}, {{1919, 0}, 0, false}},
        AnchorCase{
            "TopBarAndLeftDock", {}, {screenWith(fullHd, {60, 28, 0, 0})}, {{1919, 0}, 0, false}},
        AnchorCase{"LeftBar", {}, {screenWith(fullHd, {60, 0, 0, 0})}, {{0, 1079}, 0, false}},
        AnchorCase{"RightBar", {}, {screenWith(fullHd, {0, 0, 60, 0})}, {{1919, 1079}, 0, false}},
        AnchorCase{
            "FirstScreenEvenIfItIsOnTheRight", {}, {secondScreen, topBar}, {{3199, 0}, 0, false}}),
    nameOf<testing::TestParamInfo<AnchorCase>>);

TEST(ChooseAnchorTest, WithoutAScreenThereIsNone) {
    EXPECT_FALSE(chooseAnchor({.pointer = QPoint(1, 1)}, {}).has_value());
}

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

struct GrowthCase {
    std::string name;
    QPoint anchor;
    PlacementScreen screen;
};

class Growth : public testing::TestWithParam<GrowthCase> {};

TEST_P(Growth, NeverMovesTheEdgeAtTheBarNorLeavesTheReach) {
    const auto& [name, anchor, screen] = GetParam();
    const PanelPlacement first = placePanel(anchor, screen, {320, 1}, 4);
    for (int height = 1; height <= 1500; height += 7) {
        const PanelPlacement next = placePanel(anchor, screen, {320, height}, 4);
        ASSERT_EQ(next.reach, first.reach);
        ASSERT_TRUE(next.reach.contains(next.panel)) << height;
        ASSERT_EQ(next.panel.left(), first.panel.left());
        if (first.growth == PanelGrowth::Down)
            ASSERT_EQ(next.panel.top(), first.panel.top()) << height;
        else
            ASSERT_EQ(next.panel.bottom(), first.panel.bottom()) << height;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Bars, Growth,
    testing::Values(
        GrowthCase{"Top", {1800, 10}, topBar}, GrowthCase{"Bottom", {1800, 1070}, bottomBar},
        GrowthCase{"HiddenTop", {1800, 1}, noBar}, GrowthCase{"HiddenBottom", {1800, 1079}, noBar}),
    nameOf<testing::TestParamInfo<GrowthCase>>);

} // namespace
} // namespace lumora::tests
