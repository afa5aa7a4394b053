#include "linux/appearance/PanelTone.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

constexpr auto prefersLight = PanelEvidence::Preference::Light;
constexpr auto prefersDark = PanelEvidence::Preference::Dark;

struct Case {
    QString desktop;
    std::optional<PanelEvidence::Preference> portal;
    std::optional<bool> xfcePanelIsDark;
    bool paletteIsDark;
    SymbolTone expected;
};

TEST(PanelTone, FollowsTheBestEvidence) {
    const std::vector<Case> cases = {
        // A bar that is dark whatever the windows are.
        {u"GNOME"_s, prefersLight, {}, false, SymbolTone::Light},
        {u"ubuntu:GNOME"_s, {}, {}, false, SymbolTone::Light},
        {u"sway"_s, prefersLight, {}, false, SymbolTone::Light},
        {u"Hyprland"_s, {}, {}, false, SymbolTone::Light},
        {u"i3"_s, {}, {}, false, SymbolTone::Light},
        // GNOME's other faces follow their theme.
        {u"GNOME-Classic:GNOME"_s, {}, {}, false, SymbolTone::Dark},
        {u"GNOME-Flashback:GNOME"_s, {}, {}, true, SymbolTone::Light},
        // Xfce's panel has a setting of its own, on by default.
        {u"XFCE"_s, prefersLight, {}, false, SymbolTone::Light},
        {u"XFCE"_s, prefersLight, true, false, SymbolTone::Light},
        {u"XFCE"_s, {}, false, false, SymbolTone::Dark},
        {u"XFCE"_s, {}, false, true, SymbolTone::Light},
        {u"XFCE"_s, prefersDark, false, false, SymbolTone::Light},
        // Elsewhere the desktop's preference, then the windows.
        {u"KDE"_s, prefersDark, {}, false, SymbolTone::Light},
        {u"KDE"_s, prefersLight, {}, true, SymbolTone::Dark},
        {u"KDE"_s, {}, {}, true, SymbolTone::Light},
        {u"MATE"_s, {}, {}, false, SymbolTone::Dark},
        {QString(), {}, {}, false, SymbolTone::Dark},
        // Another desktop's setting says nothing here; a name only counts as a whole.
        {u"MATE"_s, {}, true, false, SymbolTone::Dark},
        {u"swaying"_s, {}, {}, false, SymbolTone::Dark},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(toneFor({c.desktop, c.portal, c.xfcePanelIsDark, c.paletteIsDark}), c.expected)
            << c.desktop.toStdString() << ", palette " << (c.paletteIsDark ? "dark" : "light");
    }
}

TEST(PanelTone, KnowsXfceByName) {
    EXPECT_TRUE(isXfce(u"XFCE"_s));
    EXPECT_TRUE(isXfce(u"X-Derived:Xfce"_s));
    EXPECT_FALSE(isXfce(u"GNOME"_s));
    EXPECT_FALSE(isXfce({}));
}

TEST(PanelTone, TintsStandOut) {
    EXPECT_GT(tintFor(SymbolTone::Light).lightness(), 230);
    EXPECT_LT(tintFor(SymbolTone::Dark).lightness(), 64);
}

} // namespace
} // namespace lumora
