#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsFault.h"

#include <QByteArrayView>
#include <QList>

#include <tl/expected.hpp>

namespace lumora::companion {

/// What the configuration takes from the user's environment.
struct SettingsPlaces {
    QString home;        ///< what "~" stands for
    QString dataFolder;  ///< where the log is kept unless the configuration says otherwise
    QString cacheFolder; ///< where what was fetched is kept

    bool operator==(const SettingsPlaces&) const = default;
};

/// Reads the configuration's text. All or nothing: the error is every fault there is, in the order
/// of their lines.
[[nodiscard]] tl::expected<ServiceSettings, QList<SettingsFault>>
readSettings(QByteArrayView toml, const SettingsPlaces& places);

} // namespace lumora::companion
