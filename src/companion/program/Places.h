#pragma once

#include "companion/settings/SettingsReader.h"

#include <QString>

namespace lumora::companion {

/// Where everything is, by the XDG folders of the user.
struct Places {
    QString settingsFile;    ///< the service's configuration
    QString preferencesFile; ///< Lumora's own
    SettingsPlaces inSettings;
};

/// As the environment has it now.
[[nodiscard]] Places placesOfUser();

} // namespace lumora::companion
