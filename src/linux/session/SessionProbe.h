#pragma once

#include "linux/appearance/PanelTone.h"

#include <QString>

#include <optional>

namespace lumora {

/// What the session's bus offers to the program.
struct SessionProbe {
    bool hasBus = false;
    bool hasTray = false; ///< somebody keeps status items
    QString trayProcess;  ///< who; empty: not known
    bool hasNotifications = false;
    QString notificationServer; ///< its name for itself
    bool notifiesWithActions = false;
    std::optional<bool> barThemeIsDark; ///< absent: no theme says so
    std::optional<DesktopAppearance::Preference> portal = std::nullopt; ///< absent: none is stated
};

/// Looks at the session of `desktop`, as in XDG_CURRENT_DESKTOP. Waits for answers, one after the
/// other, up to a second each; a bus that hangs may take longer.
[[nodiscard]] SessionProbe probeSession(const QString& desktop);

/// Whether somebody on the system's bus tells when the machine wakes. Waits likewise.
[[nodiscard]] bool hasWakeService();

} // namespace lumora
