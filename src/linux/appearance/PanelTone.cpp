#include "linux/appearance/PanelTone.h"

#include "platform/DesktopNames.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Desktops whose bar is dark whatever the windows look like. GNOME's older faces call themselves
// GNOME too, but have a panel that follows their theme. Sessions without a name are put together
// by hand around a window manager, with bars that are dark from the start.
bool hasDarkBar(const QString& desktop) {
    if (namesDesktop(desktop, {"GNOME-Classic"_L1, "GNOME-Flashback"_L1}))
        return false;
    if (desktop.isEmpty())
        return true;
    return namesBareCompositor(desktop) ||
           namesDesktop(
               desktop, {"GNOME"_L1, "Unity"_L1, "X-Cinnamon"_L1, "i3"_L1, "bspwm"_L1, "qtile"_L1,
                         "awesome"_L1, "xmonad"_L1});
}

SymbolTone toneOn(bool darkPanel) {
    return darkPanel ? SymbolTone::Light : SymbolTone::Dark;
}

} // namespace

SymbolTone toneFor(const PanelEvidence& evidence) {
    if (evidence.wish == u"dark" || evidence.wish == u"light")
        return toneOn(evidence.wish == u"dark");
    if (hasDarkBar(evidence.desktop))
        return SymbolTone::Light;
    // Xfce sets its panel up as a dark one; else it is like the windows.
    if (namesDesktop(evidence.desktop, {"XFCE"_L1}) && evidence.xfcePanelIsDark.value_or(true))
        return SymbolTone::Light;
    // The rest speaks of windows; a bar with a theme of its own may differ from them.
    if (evidence.themeIsDark)
        return toneOn(*evidence.themeIsDark);
    if (evidence.portal)
        return toneOn(*evidence.portal == PanelEvidence::Preference::Dark);
    return toneOn(evidence.paletteIsDark);
}

} // namespace lumora
