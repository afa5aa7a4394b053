#pragma once

#include "platform/BarAppearance.h"
#include "platform/DesktopAppearance.h"

#include <QString>

#include <optional>

namespace lumora {

/// What can be known about the panel's colours.
struct PanelEvidence {
    using Preference = DesktopAppearance::Preference;

    QString wish = {};                     ///< the user's: "dark" or "light"; anything else: none
    QString desktop = {};                  ///< as in XDG_CURRENT_DESKTOP, e.g. "ubuntu:GNOME"
    std::optional<bool> themeIsDark = {};  ///< the panel's own theme; absent: it says nothing
    std::optional<Preference> portal = {}; ///< the desktop's, for windows; absent: none
    std::optional<bool> xfcePanelIsDark = {}; ///< Xfce's setting; absent: not known
    bool paletteIsDark = false;               ///< the program's own windows

    bool operator==(const PanelEvidence&) const = default;
};

/// Chooses the symbol's tone for `evidence`.
SymbolTone toneFor(const PanelEvidence& evidence);

} // namespace lumora
