#include "texts/NoStatusArea.h"

#include "platform/DesktopNames.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString remedy(const QString& desktop) {
    // These call themselves GNOME too, but have a panel of another kind.
    const bool hasOwnPanel = namesDesktop(desktop, {"Budgie"_L1, "GNOME-Flashback"_L1});
    if (namesDesktop(desktop, {"GNOME"_L1}) && !hasOwnPanel)
        return u"GNOME shows it with the extension AppIndicator: install the package "
               "gnome-shell-extension-appindicator, log in again and switch it on."_s;
    if (namesBareCompositor(desktop))
        return u"Add a tray to your bar; waybar's module is called tray."_s;
    return u"Add a status area, also called system tray, to your desktop's panel."_s;
}

} // namespace

NoStatusArea noStatusArea(const QString& desktop) {
    return {
        .title = u"Lumora is running, but no bar shows it"_s,
        .body = remedy(desktop) + u" Meanwhile the command “lumora toggle” opens the panel."_s,
    };
}

} // namespace lumora
