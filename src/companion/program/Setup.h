#pragma once

#include "companion/program/Places.h"
#include "companion/program/ServiceCommandLine.h"
#include "companion/settings/NewSettings.h"

#include <tl/expected.hpp>

namespace lumora::companion {

/// What the first configuration says. Paths become absolute; the files and folders of calendars and
/// the journal must be there. The error is one line for people.
[[nodiscard]] tl::expected<NewSettings, QString>
newSettingsFor(const InitCommand& init, const QByteArray& token);

/// Writes the configuration, readable by the user alone, unless there is one. The error is one line
/// for people.
[[nodiscard]] tl::expected<void, QString>
writeNewSettings(const NewSettings& settings, const QString& path);

/// Reads the configuration; the error is what to tell people, a line each.
[[nodiscard]] tl::expected<ServiceSettings, QStringList> readSettingsFile(const Places& places);

/// Where Lumora finds the service.
[[nodiscard]] QString endpointOf(quint16 port);

/// What to do once the configuration is there, for a session with or without systemd.
[[nodiscard]] QString nextSteps(bool hasSystemd, const QString& dataFolder);

} // namespace lumora::companion
