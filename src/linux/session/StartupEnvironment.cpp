#include "linux/session/StartupEnvironment.h"

#include "linux/session/WaylandModule.h"

#include <QList>

#include <algorithm>

namespace lumora {

namespace {

const QByteArray platformVariable = "QT_QPA_PLATFORM";
const QByteArray themeVariable = "QT_QPA_PLATFORMTHEME";
const QByteArray desktopVariable = "XDG_CURRENT_DESKTOP";
const QByteArray displayVariable = "DISPLAY";
const QByteArray waylandVariable = "WAYLAND_DISPLAY";
// What the toolkit guesses the desktop by where nothing names it.
const QByteArray sessionVariable = "DESKTOP_SESSION";
const QByteArray gnomeVariable = "GNOME_DESKTOP_SESSION_ID";
const QByteArray kdeVariable = "KDE_FULL_SESSION";

/// Those of the variables that are set.
Environment presentVariables(const QList<QByteArray>& names) {
    Environment environment;
    for (const auto& name : names) {
        if (qEnvironmentVariableIsSet(name.constData()))
            environment.insert(name, qgetenv(name.constData()));
    }
    return environment;
}

/// Whether the toolkit would look for the GTK theme by itself.
bool isGtkDesktop(const Environment& environment) {
    static const QList<QByteArray> gtkDesktops = {"GNOME", "X-CINNAMON", "PANTHEON", "UNITY",
                                                  "MATE",  "XFCE",       "LXDE"};
    const QByteArray current = environment.value(desktopVariable);
    if (current.isEmpty()) {
        return environment.value(kdeVariable).isEmpty() &&
               !(environment.value(gnomeVariable) + environment.value(sessionVariable)).isEmpty();
    }
    const auto names = current.toUpper().split(':');
    return std::any_of(names.cbegin(), names.cend(), [](const QByteArray& name) {
        return gtkDesktops.contains(name);
    });
}

} // namespace

Environment
startupOverrides(const Environment& environment, const std::function<bool()>& hasPanelLayer) {
    Environment overrides;
    if (environment.value(platformVariable).isEmpty()) {
        if (!environment.value(waylandVariable).isEmpty() && hasPanelLayer())
            overrides.insert(platformVariable, "wayland;xcb");
        else if (!environment.value(displayVariable).isEmpty())
            overrides.insert(platformVariable, "xcb;wayland");
    }

    // The toolkit tries the plugins of all themes before the themes of its own, whichever was named
    // first. So it must not learn of the desktop either.
    const QByteArray theme = environment.value(themeVariable);
    const bool onGtkDesktop = isGtkDesktop(environment);
    if (theme.startsWith("gtk") || (theme.isEmpty() && onGtkDesktop))
        overrides.insert(themeVariable, "gnome");
    if (onGtkDesktop)
        overrides.insert(desktopVariable, "X-Generic");
    return overrides;
}

StartupEnvironment::StartupEnvironment() {
    const Environment environment = presentVariables(
        {platformVariable, themeVariable, desktopVariable, displayVariable, waylandVariable,
         sessionVariable, gnomeVariable, kdeVariable});
    const Environment overrides = startupOverrides(environment, &waylandHasPanelLayer);
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it) {
        const auto previous = environment.constFind(it.key());
        m_saved.push_back(
            {it.key(),
             previous == environment.cend() ? std::nullopt : std::optional(previous.value())});
        qputenv(it.key().constData(), it.value());
    }
}

StartupEnvironment::~StartupEnvironment() {
    for (const auto& [name, value] : m_saved) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

} // namespace lumora
