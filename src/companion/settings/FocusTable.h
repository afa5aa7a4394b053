#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"

namespace lumora::companion {

/// The table [focus] of the file; without one, there is no focus.
[[nodiscard]] FocusSettings readFocus(SettingsTable& file, SettingsReading& reading);

} // namespace lumora::companion
