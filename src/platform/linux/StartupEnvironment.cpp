#include "platform/linux/StartupEnvironment.h"

#include <QList>

#include <algorithm>

namespace lumora {

namespace {

const QByteArray platformVariable = "QT_QPA_PLATFORM";
const QByteArray themeVariable = "QT_QPA_PLATFORMTHEME";
const QByteArray desktopVariable = "XDG_CURRENT_DESKTOP";
const QByteArray displayVariable = "DISPLAY";

/// Desktops for which the toolkit would look for the GTK theme by itself.
bool isGtkDesktop(const QByteArray& currentDesktop) {
    static const QList<QByteArray> gtkDesktops = {"GNOME", "X-CINNAMON", "PANTHEON", "UNITY",
                                                  "MATE",  "XFCE",       "LXDE"};
    const auto names = currentDesktop.toUpper().split(':');
    return std::any_of(names.cbegin(), names.cend(), [](const QByteArray& name) {
        return gtkDesktops.contains(name);
    });
}

} // namespace

Environment startupOverrides(const Environment& environment) {
    Environment overrides;
    if (!environment.contains(platformVariable) && !environment.value(displayVariable).isEmpty())
        overrides.insert(platformVariable, "xcb;wayland");

    const QByteArray theme = environment.value(themeVariable);
    const bool wouldLoadGtk = theme.isEmpty() ? isGtkDesktop(environment.value(desktopVariable))
                                              : theme.startsWith("gtk");
    if (wouldLoadGtk)
        overrides.insert(themeVariable, "gnome");
    return overrides;
}

StartupEnvironment::StartupEnvironment() {
    Environment environment;
    for (const auto& name : {platformVariable, themeVariable, desktopVariable, displayVariable}) {
        if (qEnvironmentVariableIsSet(name.constData()))
            environment.insert(name, qgetenv(name.constData()));
    }
    const Environment overrides = startupOverrides(environment);
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
