#include "app/ThemeFollower.h"

#include "fakes/FakeAppearance.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

using Preference = DesktopAppearance::Preference;
using Wishes = DesktopAppearance::Wishes;

const DesktopFont lato = {.family = u"Lato"_s, .pointSize = 13, .weight = 500};

class ThemeFollowerTest : public testing::Test {
protected:
    ~ThemeFollowerTest() override { QApplication::setFont(usual); }

    static QString bodyFamily(const ThemeFollower& follower) {
        return follower.themes().theme().font(TextRole::Body).family();
    }

    const QFont usual = QApplication::font();
    FakeAppearance desktop;
};

TEST_F(ThemeFollowerTest, TakesTheColoursThatTheUserAskedFor) {
    desktop.setWishes({.colorScheme = Preference::Dark});
    const ThemeFollower follower(desktop, u"GNOME"_s);
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Dark);
    desktop.setWishes({.colorScheme = Preference::Light});
    EXPECT_EQ(follower.themes().theme().scheme(), ColorScheme::Light);
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return bodyFamily(follower) == u"Lato"_s; }));
}

TEST_F(ThemeFollowerTest, LeavesTheFontToDesktopsThatSetItThemselves) {
    desktop.setWishes({.font = lato});
    for (const auto& name : {u"KDE"_s, u"LXQt"_s}) {
        const ThemeFollower follower(desktop, name);
        EXPECT_EQ(QApplication::font(), usual) << name.toStdString();
    }
}

} // namespace
} // namespace lumora::tests
