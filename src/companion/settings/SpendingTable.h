#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"

namespace lumora::companion {

/// The table [spending] of the file; without one, there is no spending.
[[nodiscard]] SpendingSettings readSpending(SettingsTable& file, SettingsReading& reading);

} // namespace lumora::companion
