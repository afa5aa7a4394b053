#include "linux/appearance/PortalAppearance.h"

#include "fakes/FakePortal.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString common = u"org.freedesktop.appearance"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;
const QString plasma = u"org.kde.kdeglobals.KDE"_s;

class PortalAppearanceTest : public testing::Test {
protected:
    /// What a portal with these settings is taken to say of motion.
    static std::optional<bool> animationsOf(const QHash<QString, QVariant>& settings) {
        PrivateBus bus;
        FakePortal portal(bus.connect(), settings);
        const PortalAppearance appearance(bus.connect());
        EXPECT_TRUE(QTest::qWaitFor([&] { return portal.reads == 5; }, patience));
        // It comes after all the answers.
        portal.change(common, u"color-scheme"_s, 1U);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return appearance.colorScheme().has_value(); }, patience));
        return appearance.wishes().animations;
    }

    PrivateBus m_bus;
};

using Accent = std::optional<DesktopColor>;

} // namespace

TEST_F(PortalAppearanceTest, ReadsEachDesktopsSettingAgainstMotion) {
    EXPECT_EQ(animationsOf({{common + u" reduced-motion"_s, 1U}}), false);
    EXPECT_EQ(animationsOf({{gnome + u" enable-animations"_s, false}}), false);
    EXPECT_EQ(animationsOf({{plasma + u" AnimationDurationFactor"_s, u"0"_s}}), false);
}

TEST_F(PortalAppearanceTest, ASettingThatAllowsMotionOrMeansNothingIsNoWish) {
    EXPECT_EQ(animationsOf({}), std::nullopt);
    EXPECT_EQ(
        animationsOf({
            {common + u" reduced-motion"_s, 0U},
            {gnome + u" enable-animations"_s, true},
            {plasma + u" AnimationDurationFactor"_s, u"0.5"_s},
        }),
        std::nullopt);
    EXPECT_EQ(
        animationsOf({
            {common + u" reduced-motion"_s, 7U},
            {gnome + u" enable-animations"_s, u"perhaps"_s},
            {plasma + u" AnimationDurationFactor"_s, u"fast"_s},
        }),
        std::nullopt);
}

TEST_F(PortalAppearanceTest, FollowsChanges) {
    FakePortal portal(m_bus.connect(), {{common + u" color-scheme"_s, 1U}});
    PortalAppearance appearance(m_bus.connect());
    QSignalSpy changed(&appearance, &DesktopAppearance::changed);
    ASSERT_TRUE(changed.wait(patience));

    portal.change(gnome, u"enable-animations"_s, false);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(appearance.wishes().animations, false);
    EXPECT_EQ(appearance.colorScheme(), DesktopAppearance::Preference::Dark);

    // Two settings against motion: both have to go.
    portal.change(plasma, u"AnimationDurationFactor"_s, u"0"_s);
    portal.change(gnome, u"enable-animations"_s, true);
    portal.change(gnome, u"font-name"_s, u"Inter 11"_s);
    portal.change(common, u"color-scheme"_s, 2U);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(appearance.wishes().animations, false);
    portal.change(plasma, u"AnimationDurationFactor"_s, u"1"_s);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(appearance.wishes().animations, std::nullopt);
    EXPECT_EQ(appearance.colorScheme(), DesktopAppearance::Preference::Light);
}

TEST_F(PortalAppearanceTest, ReadsAndFollowsTheAccent) {
    FakePortal portal(
        m_bus.connect(), {{common + u" accent-color"_s, FakePortal::color(1, 0.5, 0)}});
    PortalAppearance appearance(m_bus.connect());
    QSignalSpy changed(&appearance, &DesktopAppearance::changed);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(appearance.wishes().accent, Accent({.red = 1, .green = 0.5, .blue = 0}));

    portal.change(common, u"accent-color"_s, FakePortal::color(0, 0.25, 1));
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(appearance.wishes().accent, Accent({.red = 0, .green = 0.25, .blue = 1}));
}

TEST_F(PortalAppearanceTest, WhatIsNoColourIsNoAccent) {
    FakePortal portal(m_bus.connect(), {});
    PortalAppearance appearance(m_bus.connect());
    QSignalSpy changed(&appearance, &DesktopAppearance::changed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal.reads == 5; }, patience));
    for (const QVariant& value :
         {FakePortal::color(-0.01, 0, 0), FakePortal::color(0, 1.01, 0),
          FakePortal::color(0, 0, qQNaN()), QVariant(u"orange"_s), QVariant(3.0),
          QVariant(QVariantList{0.1, 0.2, 0.3})}) {
        portal.change(common, u"accent-color"_s, FakePortal::color(0.5, 0.5, 0.5));
        ASSERT_TRUE(changed.wait(patience));
        ASSERT_TRUE(appearance.wishes().accent);
        portal.change(common, u"accent-color"_s, value);
        ASSERT_TRUE(changed.wait(patience));
        EXPECT_EQ(appearance.wishes().accent, std::nullopt);
    }
}
