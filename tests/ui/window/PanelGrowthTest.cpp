#include "ui/window/PlacementScreens.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora::tests {
namespace {

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
