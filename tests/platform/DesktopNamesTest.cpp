#include "platform/DesktopNames.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(DesktopNames, AreSeparatedByColons) {
    EXPECT_TRUE(namesDesktop(u"XFCE"_s, {"XFCE"_L1}));
    EXPECT_TRUE(namesDesktop(u"X-Derived:Xfce"_s, {"XFCE"_L1}));
    EXPECT_FALSE(namesDesktop(u"GNOME-Classic"_s, {"GNOME"_L1}));
    EXPECT_FALSE(namesDesktop({}, {"XFCE"_L1}));
}

TEST(DesktopNames, OneOfManyIsEnough) {
    EXPECT_TRUE(namesDesktop(u"ubuntu:GNOME"_s, {"KDE"_L1, "GNOME"_L1}));
    EXPECT_FALSE(namesDesktop(u"ubuntu:GNOME"_s, {"KDE"_L1, "LXQt"_L1}));
}

TEST(DesktopNames, TellCompositorsWithoutABar) {
    for (const QString& desktop :
         {u"sway"_s, u"Hyprland"_s, u"river"_s, u"niri"_s, u"labwc"_s, u"Wayfire"_s,
          u"cagebreak:wlroots"_s})
        EXPECT_TRUE(namesBareCompositor(desktop)) << desktop.toStdString();
    for (const QString& desktop : {u"KDE"_s, u"GNOME"_s, u"i3"_s, u"swaying"_s, QString()})
        EXPECT_FALSE(namesBareCompositor(desktop)) << desktop.toStdString();
}
