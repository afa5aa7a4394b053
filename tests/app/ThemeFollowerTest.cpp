#include "app/ThemeFollower.h"

#include "fakes/FakeAppearance.h"
#include "support/Patience.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

using Preference = DesktopAppearance::Preference;
using Wishes = DesktopAppearance::Wishes;

const DesktopFont lato = {.family = u"Lato"_s, .pointSize = 13, .weight = 500};

class ThemeFollowerTest : public testing::Test {
protected:
    void TearDown() override {
        QApplication::setFont(usual);
        QToolTip::setPalette(usualToolTips);
    }

    static QString bodyFamily(const ThemeFollower& follower) {
        return follower.themes().theme().font(TextRole::Body).family();
    }

    const QFont usual = QApplication::font();
    const QPalette usualToolTips = QToolTip::palette();
    FakeAppearance desktop;
};

TEST_F(ThemeFollowerTest, TakesTheColoursThatTheUserAskedFor) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, u"GNOME"_s);
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Dark);
    desktop.setWishes({.colorScheme = Preference::Light});
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Light);
}

TEST_F(ThemeFollowerTest, TakesTheAccentOnEveryDesktop) {
    for (const auto& name : {u"GNOME"_s, u"XFCE"_s, u"KDE"_s, u""_s}) {
        desktop.setWishes({});
        const ThemeFollower follower(desktop, name);
        const QColor own = follower.themes().theme().color(ColorRole::Accent);
        desktop.setWishes({.accent = DesktopColor{.red = 0.6, .blue = 0.2}});
        EXPECT_EQ(
            follower.themes().theme().color(ColorRole::Accent).name(), QColor(153, 0, 51).name());
        desktop.setWishes({});
        EXPECT_EQ(follower.themes().theme().color(ColorRole::Accent), own);
    }
}

TEST_F(ThemeFollowerTest, ToolTipsHaveTheColoursOfThePanel) {
    const ThemeFollower follower(desktop, u"GNOME"_s);
    for (const auto scheme : {Preference::Dark, Preference::Light}) {
        desktop.setWishes({.colorScheme = scheme});
        const Theme& theme = follower.themes().theme();
        const QPalette palette = QToolTip::palette();
        EXPECT_EQ(palette.color(QPalette::ToolTipBase), theme.color(ColorRole::Background));
        EXPECT_EQ(palette.color(QPalette::ToolTipText), theme.color(ColorRole::Secondary));
    }
}

TEST_F(ThemeFollowerTest, PlasmasToolTipsStayAsTheyAre) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, u"KDE"_s);
    EXPECT_EQ(QToolTip::palette(), usualToolTips);
}

TEST_F(ThemeFollowerTest, KeepsTheToolkitsFontWhereNoneIsStated) {
    const ThemeFollower follower(desktop, u"GNOME"_s);
    EXPECT_EQ(QApplication::font(), usual);
    EXPECT_EQ(bodyFamily(follower), usual.family());
}

TEST_F(ThemeFollowerTest, TakesTheDesktopsFontForTheWholeProgram) {
    desktop.setWishes({.font = lato});
    const ThemeFollower follower(desktop, u"XFCE"_s);
    EXPECT_EQ(QApplication::font().family(), u"Lato"_s);
    EXPECT_EQ(QApplication::font().pointSizeF(), 13);
    EXPECT_EQ(QApplication::font().weight(), QFont::Medium);
    EXPECT_EQ(bodyFamily(follower), u"Lato"_s);
}

TEST_F(ThemeFollowerTest, FollowsTheDesktopsFont) {
    const ThemeFollower follower(desktop, u"XFCE"_s);
    desktop.setWishes({.font = lato});
    EXPECT_TRUE(QTest::qWaitFor([&] { return bodyFamily(follower) == u"Lato"_s; }, patience));
}

TEST_F(ThemeFollowerTest, LeavesTheFontToDesktopsThatSetItThemselves) {
    desktop.setWishes({.font = lato});
    for (const auto& name : {u"KDE"_s, u"LXQt"_s}) {
        const ThemeFollower follower(desktop, name);
        EXPECT_EQ(QApplication::font(), usual) << name.toStdString();
    }
}

TEST_F(ThemeFollowerTest, LetsThingsMoveUnlessTheDesktopAsksOtherwise) {
    for (const auto& name : {u"KDE"_s, u"GNOME"_s}) {
        desktop.setWishes({});
        const ThemeFollower follower(desktop, name);
        EXPECT_TRUE(follower.themes().theme().allowsMotion());
        desktop.setWishes({.animations = false});
        EXPECT_FALSE(follower.themes().theme().allowsMotion());
        desktop.setWishes({.animations = true});
        EXPECT_TRUE(follower.themes().theme().allowsMotion());
    }
}

} // namespace
} // namespace lumora::tests
