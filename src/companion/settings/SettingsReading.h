#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsFault.h"
#include "companion/settings/SettingsReader.h"
#include "companion/settings/SettingsTable.h"

#include <QList>
#include <QString>

#include <optional>
#include <string_view>

namespace lumora::companion {

/// What the readers of the single tables share: the user's environment, and the faults found so
/// far.
struct SettingsReading {
    SettingsPlaces places;
    QList<SettingsFault> faults = {};

    /// The path that the key holds; absent when there is none, or it is relative.
    std::optional<QString> path(SettingsTable& table, std::string_view key) const;

    /// The command that the key holds; empty when there is none.
    CommandLine command(SettingsTable& table, std::string_view key) const;
};

} // namespace lumora::companion
