#include "app/ThemeFollower.h"

#include "fakes/FakeAppearance.h"
#include "fakes/SwitchedCompositing.h"
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

    /// What a tool tip of the toolkit's paints, on a transparent ground.
    static QImage pictureOfToolTip() {
        QWidget owner;
        owner.show();
        QToolTip::showText(owner.mapToGlobal(QPoint(1, 1)), u"Join the meeting"_s, &owner);
        QImage picture;
        const auto all = QApplication::topLevelWidgets();
        for (QWidget* window : all) {
            if (window->windowType() != Qt::ToolTip || !window->isVisible())
                continue;
            picture = QImage(window->size(), QImage::Format_ARGB32);
            picture.fill(Qt::transparent);
            const bool isBlended = window->testAttribute(Qt::WA_TranslucentBackground);
            window->render(
                &picture, {}, {},
                isBlended ? QWidget::DrawChildren : QWidget::DrawWindowBackground);
            delete window;
        }
        return picture;
    }

    const QFont usual = QApplication::font();
    const QPalette usualToolTips = QToolTip::palette();
    FakeAppearance desktop;
    SwitchedCompositing compositing{true};
};

TEST_F(ThemeFollowerTest, TakesTheColoursThatTheUserAskedFor) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, compositing, u"GNOME"_s);
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Dark);
    desktop.setWishes({.colorScheme = Preference::Light});
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Light);
}

TEST_F(ThemeFollowerTest, TakesTheAccentOnEveryDesktop) {
    for (const auto& name : {u"GNOME"_s, u"XFCE"_s, u"KDE"_s, u""_s}) {
        desktop.setWishes({});
        const ThemeFollower follower(desktop, compositing, name);
        const QColor own = follower.themes().theme().color(ColorRole::Accent);
        desktop.setWishes({.accent = DesktopColor{.red = 0.6, .blue = 0.2}});
        EXPECT_EQ(
            follower.themes().theme().color(ColorRole::Accent).name(), QColor(153, 0, 51).name());
        desktop.setWishes({});
        EXPECT_EQ(follower.themes().theme().color(ColorRole::Accent), own);
    }
}

TEST_F(ThemeFollowerTest, ToolTipsHaveTheColoursOfThePanel) {
    const ThemeFollower follower(desktop, compositing, u"GNOME"_s);
    for (const auto scheme : {Preference::Dark, Preference::Light}) {
        desktop.setWishes({.colorScheme = scheme});
        const Theme& theme = follower.themes().theme();
        const QPalette palette = QToolTip::palette();
        EXPECT_EQ(palette.color(QPalette::ToolTipBase), theme.color(ColorRole::Raised));
        EXPECT_EQ(palette.color(QPalette::ToolTipText), theme.color(ColorRole::Primary));
    }
}

TEST_F(ThemeFollowerTest, ToolTipsAreDrawnInTheTheme) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, compositing, u"GNOME"_s);
    const Theme& theme = follower.themes().theme();
    for (const bool isRound : {true, false}) {
        compositing.setActive(isRound);
        const QImage tip = pictureOfToolTip();
        EXPECT_EQ(tip.pixelColor(0, 0).alpha(), isRound ? 0 : 255);
        const QColor ground = tip.pixelColor(tip.width() / 2, 1);
        EXPECT_EQ(ground.rgb(), theme.color(ColorRole::Raised).rgb());
        // A hairline, and none that shouts.
        const double contrast = contrastRatio(tip.pixelColor(tip.width() / 2, 0), ground);
        EXPECT_GT(contrast, 1.1);
        EXPECT_LT(contrast, 2);
    }
}

TEST_F(ThemeFollowerTest, WindowsAreRoundWhereTheyAreBlended) {
    const ThemeFollower follower(desktop, compositing, u"GNOME"_s);
    EXPECT_TRUE(follower.themes().theme().roundsWindows());
    compositing.setActive(false);
    EXPECT_FALSE(follower.themes().theme().roundsWindows());
}

TEST_F(ThemeFollowerTest, PlasmasToolTipsStayAsTheyAre) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, compositing, u"KDE"_s);
    EXPECT_EQ(QToolTip::palette(), usualToolTips);
}

TEST_F(ThemeFollowerTest, KeepsTheToolkitsFontWhereNoneIsStated) {
    const ThemeFollower follower(desktop, compositing, u"GNOME"_s);
    EXPECT_EQ(QApplication::font(), usual);
    EXPECT_EQ(bodyFamily(follower), usual.family());
}

TEST_F(ThemeFollowerTest, TakesTheDesktopsFontForTheWholeProgram) {
    desktop.setWishes({.font = lato});
    const ThemeFollower follower(desktop, compositing, u"XFCE"_s);
    EXPECT_EQ(QApplication::font().family(), u"Lato"_s);
    EXPECT_EQ(QApplication::font().pointSizeF(), 13);
    EXPECT_EQ(QApplication::font().weight(), QFont::Medium);
    EXPECT_EQ(bodyFamily(follower), u"Lato"_s);
}

TEST_F(ThemeFollowerTest, FollowsTheDesktopsFont) {
    const ThemeFollower follower(desktop, compositing, u"XFCE"_s);
    desktop.setWishes({.font = lato});
    EXPECT_TRUE(QTest::qWaitFor([&] { return bodyFamily(follower) == u"Lato"_s; }, patience));
}

TEST_F(ThemeFollowerTest, LeavesTheFontToDesktopsThatSetItThemselves) {
    desktop.setWishes({.font = lato});
    for (const auto& name : {u"KDE"_s, u"LXQt"_s}) {
        const ThemeFollower follower(desktop, compositing, name);
        EXPECT_EQ(QApplication::font(), usual) << name.toStdString();
    }
}

TEST_F(ThemeFollowerTest, LetsThingsMoveUnlessTheDesktopAsksOtherwise) {
    for (const auto& name : {u"KDE"_s, u"GNOME"_s}) {
        desktop.setWishes({});
        const ThemeFollower follower(desktop, compositing, name);
        EXPECT_TRUE(follower.themes().theme().allowsMotion());
        desktop.setWishes({.animations = false});
        EXPECT_FALSE(follower.themes().theme().allowsMotion());
        desktop.setWishes({.animations = true});
        EXPECT_TRUE(follower.themes().theme().allowsMotion());
    }
}

} // namespace
} // namespace lumora::tests
