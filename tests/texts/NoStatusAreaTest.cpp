#include "texts/NoStatusArea.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

TEST(NoStatusArea, NamesWhatTheDesktopLacks) {
    for (const QString& desktop : {u"GNOME"_s, u"ubuntu:GNOME"_s, u"gnome"_s})
        EXPECT_TRUE(noStatusArea(desktop).body.contains(u"gnome-shell-extension-appindicator"));
    for (const QString& desktop :
         {u"sway"_s, u"Hyprland"_s, u"sway:wlroots"_s, u"labwc"_s, u"wayfire"_s})
        EXPECT_TRUE(noStatusArea(desktop).body.contains(u"waybar"));
    for (const QString& desktop :
         {u"XFCE"_s, u"KDE"_s, QString(), u"GNOMEish"_s, u"Budgie:GNOME"_s,
          u"GNOME-Flashback:GNOME"_s})
        EXPECT_TRUE(noStatusArea(desktop).body.contains(u"system tray"));
}

TEST(NoStatusArea, TellsHowToOpenThePanel) {
    for (const QString& desktop : {u"GNOME"_s, u"sway"_s, QString()}) {
        EXPECT_TRUE(noStatusArea(desktop).body.endsWith(
            u" Meanwhile the command “lumora toggle” opens the panel."));
        EXPECT_FALSE(noStatusArea(desktop).title.isEmpty());
    }
}

} // namespace
} // namespace lumora
