#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"

namespace lumora::companion {

/// The table [capture] of the file; without one, thoughts go nowhere.
[[nodiscard]] CaptureSettings readCapture(SettingsTable& file, SettingsReading& reading);

} // namespace lumora::companion
