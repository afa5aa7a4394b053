#include "linux/appearance/PanelTone.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool names(const QString& desktop, QLatin1StringView name) {
    return desktop.split(u':').contains(name, Qt::CaseInsensitive);
}

// Desktops whose bar is dark whatever the windows look like. GNOME's older faces call themselves
// GNOME too, but have a panel that follows their theme.
bool hasDarkBar(const QString& desktop) {
    if (names(desktop, "GNOME-Classic"_L1) || names(desktop, "GNOME-Flashback"_L1))
        return false;
    constexpr std::array darkBars = {"GNOME"_L1, "Unity"_L1,   "sway"_L1,  "Hyprland"_L1,
                                     "i3"_L1,    "river"_L1,   "niri"_L1,  "bspwm"_L1,
                                     "qtile"_L1, "awesome"_L1, "xmonad"_L1};
    return std::ranges::any_of(darkBars, [&](auto name) { return names(desktop, name); });
}

SymbolTone toneOn(bool darkPanel) {
    return darkPanel ? SymbolTone::Light : SymbolTone::Dark;
}

} // namespace

SymbolTone toneFor(const PanelEvidence& evidence) {
    if (hasDarkBar(evidence.desktop))
        return SymbolTone::Light;
    // Xfce's panel is dark unless told otherwise; then it follows the theme like any other.
    if (isXfce(evidence.desktop) && evidence.xfcePanelIsDark.value_or(true))
        return SymbolTone::Light;
    if (evidence.portal)
        return toneOn(*evidence.portal == PanelEvidence::Preference::Dark);
    return toneOn(evidence.paletteIsDark);
}

bool isXfce(const QString& desktop) {
    return names(desktop, "XFCE"_L1);
}

} // namespace lumora
