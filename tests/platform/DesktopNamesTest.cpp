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
