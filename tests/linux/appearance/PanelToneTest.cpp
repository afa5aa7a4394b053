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
    std::optional<bool> xfcePanelIsDark;
    std::optional<PanelEvidence::Preference> portal;
    bool paletteIsDark;
    SymbolTone expected;
};

void expectTones(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        EXPECT_EQ(
            toneFor(
                {.desktop = c.desktop,
                 .portal = c.portal,
                 .xfcePanelIsDark = c.xfcePanelIsDark,
                 .paletteIsDark = c.paletteIsDark}),
            c.expected)
            << c.desktop.toStdString() << ", row " << &c - cases.data();
    }
}

// In each row, what stands right of the source that decides says the opposite.
TEST(PanelTone, FollowsTheFirstSourceThatSays) {
    expectTones({
        // A desktop whose bar is dark whatever the windows are.
        {u"GNOME"_s, false, prefersLight, false, SymbolTone::Light},
        {u"GNOME"_s, {}, {}, false, SymbolTone::Light},
        // Xfce's panel has a setting of its own, on by default.
        {u"XFCE"_s, true, prefersLight, false, SymbolTone::Light},
        {u"XFCE"_s, {}, prefersLight, false, SymbolTone::Light},
        {u"XFCE"_s, true, {}, false, SymbolTone::Light},
        // Switched off, it leaves the decision to the rest.
        {u"XFCE"_s, false, prefersDark, false, SymbolTone::Light},
        {u"XFCE"_s, false, prefersLight, true, SymbolTone::Dark},
        {u"XFCE"_s, false, {}, true, SymbolTone::Light},
        {u"XFCE"_s, false, {}, false, SymbolTone::Dark},
        // Elsewhere the desktop's preference, then the windows.
        {u"KDE"_s, {}, prefersDark, false, SymbolTone::Light},
        {u"KDE"_s, {}, prefersLight, true, SymbolTone::Dark},
        {u"KDE"_s, {}, {}, true, SymbolTone::Light},
        {u"MATE"_s, {}, {}, false, SymbolTone::Dark},
        {u"Openbox"_s, {}, {}, false, SymbolTone::Dark},
        // Xfce's setting says nothing of another desktop.
        {u"MATE"_s, true, {}, false, SymbolTone::Dark},
        {u"MATE"_s, true, prefersLight, false, SymbolTone::Dark},
    });
}

TEST(PanelTone, KnowsTheDesktopsWithADarkBar) {
    for (const QString& name :
         {u"GNOME"_s, u"ubuntu:GNOME"_s, u"Unity"_s, u"sway"_s, u"Hyprland"_s, u"i3"_s, u"river"_s,
          u"niri"_s, u"labwc:wlroots"_s, u"Wayfire"_s, u"bspwm"_s, u"qtile"_s, u"awesome"_s,
          u"xmonad"_s, u"X-Cinnamon"_s, QString()})
        expectTones({{name, {}, prefersLight, false, SymbolTone::Light}});
    expectTones({
        // GNOME's other faces follow their theme.
        {u"GNOME-Classic:GNOME"_s, {}, {}, false, SymbolTone::Dark},
        {u"GNOME-Flashback:GNOME"_s, {}, prefersLight, true, SymbolTone::Dark},
        {u"GNOME-Flashback:GNOME"_s, {}, {}, true, SymbolTone::Light},
        // A name only counts as a whole.
        {u"swaying"_s, {}, {}, false, SymbolTone::Dark},
    });
}

TEST(PanelTone, BelievesTheBarsOwnThemeBeforeWhatIsSaidOfWindows) {
    PanelEvidence evidence{.desktop = u"KDE"_s, .themeIsDark = true, .portal = prefersLight};
    EXPECT_EQ(toneFor(evidence), SymbolTone::Light);
    evidence.themeIsDark = false;
    evidence.portal = prefersDark;
    evidence.paletteIsDark = true;
    EXPECT_EQ(toneFor(evidence), SymbolTone::Dark);
}

TEST(PanelTone, BelievesTheUserFirst) {
    PanelEvidence evidence{.wish = u"light"_s, .desktop = u"sway"_s, .themeIsDark = true};
    EXPECT_EQ(toneFor(evidence), SymbolTone::Dark);
    evidence.wish = u"auto"_s;
    EXPECT_EQ(toneFor(evidence), SymbolTone::Light);
    evidence = {.wish = u"dark"_s, .desktop = u"KDE"_s, .themeIsDark = false};
    EXPECT_EQ(toneFor(evidence), SymbolTone::Light);
}

} // namespace
} // namespace lumora
