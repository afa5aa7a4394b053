#include "linux/appearance/StyleColor.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

constexpr bool lightWindows = false;
constexpr bool darkWindows = true;

TEST(StyleColor, ReadsEveryWayToWriteAColor) {
    EXPECT_EQ(isDarkBackground(u" #041b27", lightWindows), true);
    EXPECT_EQ(isDarkBackground(u"#edeceb", darkWindows), false);
    EXPECT_EQ(isDarkBackground(u"rgba(0, 0, 0, 80%)", lightWindows), true);
    EXPECT_EQ(isDarkBackground(u"RGB(240,240,240)", darkWindows), false);
    EXPECT_EQ(isDarkBackground(u"hsv(0, 0, 20)", lightWindows), true);
    EXPECT_EQ(isDarkBackground(u"hsva(0, 0, 220, 100)", darkWindows), false);
    EXPECT_EQ(isDarkBackground(u"black", lightWindows), true);
    EXPECT_EQ(isDarkBackground(u"white", darkWindows), false);
}

TEST(StyleColor, TakesAGradientByItsMiddle) {
    EXPECT_EQ(
        isDarkBackground(
            u"qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #515048, stop:1 #3C3B37)",
            lightWindows),
        true);
    EXPECT_EQ(
        isDarkBackground(
            u"qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 rgba(80, 80, 80, 80%), "
            u"stop:0.5 #ffffff, stop:1 #ffffff)",
            darkWindows),
        false);
}

TEST(StyleColor, KnowsTheWindowsOwnColors) {
    EXPECT_EQ(isDarkBackground(u"palette(window)", lightWindows), false);
    EXPECT_EQ(isDarkBackground(u"palette(window)", darkWindows), true);
    EXPECT_EQ(isDarkBackground(u"palette(text)", lightWindows), true);
    EXPECT_EQ(isDarkBackground(u"palette( Text )", darkWindows), false);
}

TEST(StyleColor, SaysNothingWithoutAColor) {
    for (const auto* value : {u"", u"transparent", u"url(black.png)", u"rgb(1)", u"none"})
        EXPECT_EQ(isDarkBackground(value, lightWindows), std::nullopt);
}

TEST(StyleColor, JudgesAsPeopleSee) {
    EXPECT_TRUE(isDark(0, 0, 255));
    EXPECT_FALSE(isDark(0, 255, 0));
    EXPECT_TRUE(isDark(127, 127, 127));
    EXPECT_FALSE(isDark(128, 128, 128));
}

} // namespace
} // namespace lumora
