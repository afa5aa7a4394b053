#include "platform/linux/StartupEnvironment.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(StartupEnvironment, PrefersX11WhereverThereIsADisplay) {
    EXPECT_EQ(
        startupOverrides({{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}),
        (Environment{{"QT_QPA_PLATFORM", "xcb;wayland"}}));
    EXPECT_TRUE(startupOverrides({{"WAYLAND_DISPLAY", "wayland-0"}}).isEmpty());
    EXPECT_TRUE(startupOverrides({{"DISPLAY", ""}}).isEmpty());
}

TEST(StartupEnvironment, LeavesTheUsersChoiceOfPlatformAlone) {
    EXPECT_TRUE(startupOverrides({{"DISPLAY", ":0"}, {"QT_QPA_PLATFORM", "wayland"}}).isEmpty());
}

TEST(StartupEnvironment, KeepsTheGtkThemeAway) {
    for (const char* desktop : {"GNOME", "ubuntu:GNOME", "XFCE", "MATE", "X-Cinnamon", "Unity"})
        EXPECT_EQ(
            startupOverrides({{"XDG_CURRENT_DESKTOP", desktop}}),
            (Environment{{"QT_QPA_PLATFORMTHEME", "gnome"}}))
            << desktop;
    EXPECT_EQ(
        startupOverrides({{"QT_QPA_PLATFORMTHEME", "gtk3"}, {"XDG_CURRENT_DESKTOP", "sway"}}),
        (Environment{{"QT_QPA_PLATFORMTHEME", "gnome"}}));
}

TEST(StartupEnvironment, LeavesOtherThemesAlone) {
    EXPECT_TRUE(startupOverrides({{"XDG_CURRENT_DESKTOP", "KDE"}}).isEmpty());
    EXPECT_TRUE(
        startupOverrides({{"XDG_CURRENT_DESKTOP", "XFCE"}, {"QT_QPA_PLATFORMTHEME", "qt6ct"}})
            .isEmpty());
}

TEST(StartupEnvironment, GivesTheEnvironmentBack) {
    qputenv("QT_QPA_PLATFORMTHEME", "gtk3");
    {
        const StartupEnvironment environment;
        EXPECT_EQ(qgetenv("QT_QPA_PLATFORMTHEME"), "gnome");
    }
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORMTHEME"), "gtk3");
    qunsetenv("QT_QPA_PLATFORMTHEME");
}
