#include "linux/session/StartupEnvironment.h"

#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

using namespace lumora;
using tests::ScopedEnvironment;

TEST(StartupEnvironment, PrefersX11WhereverThereIsADisplay) {
    EXPECT_EQ(
        startupOverrides({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}),
        (Environment{{"QT_QPA_PLATFORM", "xcb;wayland"}}));
    EXPECT_TRUE(startupOverrides({{"WAYLAND_DISPLAY", "wayland-0"}}).isEmpty());
    EXPECT_TRUE(startupOverrides({{"DISPLAY", ""}}).isEmpty());
}

TEST(StartupEnvironment, PrefersWaylandWhereItHasALayerForThePanel) {
    const auto yes = [] { return true; };
    EXPECT_EQ(
        startupOverrides({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}, yes),
        (Environment{{"QT_QPA_PLATFORM", "wayland;xcb"}}));
    EXPECT_EQ(
        startupOverrides({{"WAYLAND_DISPLAY", "wayland-0"}}, yes),
        (Environment{{"QT_QPA_PLATFORM", "wayland;xcb"}}));
}

TEST(StartupEnvironment, LooksForALayerOnlyWhereThereMayBeOne) {
    bool asked = false;
    const auto ask = [&asked] { return asked = true; };
    EXPECT_EQ(
        startupOverrides({{"DISPLAY", ":0"}}, ask),
        (Environment{{"QT_QPA_PLATFORM", "xcb;wayland"}}));
    const Environment chosen{
        {"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}, {"QT_QPA_PLATFORM", "xcb"}};
    EXPECT_TRUE(startupOverrides(chosen, ask).isEmpty());
    EXPECT_FALSE(asked);
}

TEST(StartupEnvironment, LeavesTheUsersChoiceOfPlatformAlone) {
    EXPECT_TRUE(startupOverrides({{"DISPLAY", ":0"}, {"QT_QPA_PLATFORM", "wayland"}}).isEmpty());
}

TEST(StartupEnvironment, KeepsTheGtkThemeAway) {
    const Environment noGtk{
        {"QT_QPA_PLATFORMTHEME", "gnome"}, {"XDG_CURRENT_DESKTOP", "X-Generic"}};
    for (const char* desktop : {"GNOME", "ubuntu:GNOME", "XFCE", "MATE", "X-Cinnamon", "Unity"})
        EXPECT_EQ(startupOverrides({{"XDG_CURRENT_DESKTOP", desktop}}), noGtk) << desktop;
    EXPECT_EQ(
        startupOverrides({{"QT_QPA_PLATFORMTHEME", "gtk3"}, {"XDG_CURRENT_DESKTOP", "GNOME"}}),
        noGtk);
    EXPECT_EQ(
        startupOverrides({{"QT_QPA_PLATFORMTHEME", "gtk3"}, {"XDG_CURRENT_DESKTOP", "sway"}}),
        (Environment{{"QT_QPA_PLATFORMTHEME", "gnome"}}));
}

TEST(StartupEnvironment, KeepsTheGtkThemeAwayWhereOlderVariablesNameTheDesktop) {
    const Environment noGtk{
        {"QT_QPA_PLATFORMTHEME", "gnome"}, {"XDG_CURRENT_DESKTOP", "X-Generic"}};
    EXPECT_EQ(startupOverrides({{"DESKTOP_SESSION", "gnome"}}), noGtk);
    EXPECT_EQ(startupOverrides({{"GNOME_DESKTOP_SESSION_ID", "this-is-deprecated"}}), noGtk);
    EXPECT_TRUE(
        startupOverrides({{"KDE_FULL_SESSION", "true"}, {"DESKTOP_SESSION", "plasma"}}).isEmpty());
    EXPECT_TRUE(
        startupOverrides({{"XDG_CURRENT_DESKTOP", "KDE"}, {"DESKTOP_SESSION", "gnome"}}).isEmpty());
}

TEST(StartupEnvironment, LeavesOtherThemesAlone) {
    EXPECT_TRUE(startupOverrides({{"XDG_CURRENT_DESKTOP", "KDE"}}).isEmpty());
    // But when there is no such theme, the desktop's must not take its place.
    EXPECT_EQ(
        startupOverrides({{"XDG_CURRENT_DESKTOP", "XFCE"}, {"QT_QPA_PLATFORMTHEME", "qt6ct"}}),
        (Environment{{"XDG_CURRENT_DESKTOP", "X-Generic"}}));
}

TEST(StartupEnvironment, GivesTheEnvironmentBack) {
    const ScopedEnvironment theme("QT_QPA_PLATFORMTHEME", "gtk3");
    const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", "GNOME");
    {
        const StartupEnvironment environment;
        EXPECT_EQ(qgetenv("QT_QPA_PLATFORMTHEME"), "gnome");
        EXPECT_EQ(qgetenv("XDG_CURRENT_DESKTOP"), "X-Generic");
    }
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORMTHEME"), "gtk3");
    EXPECT_EQ(qgetenv("XDG_CURRENT_DESKTOP"), "GNOME");
}
