#include "ui/window/PlacementScreens.h"

#include <gtest/gtest.h>

#include <optional>
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

} // namespace
} // namespace lumora::tests
