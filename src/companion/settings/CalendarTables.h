#pragma once

#include "companion/calendars/CalendarSettings.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"

#include <vector>

namespace lumora::companion {

/// The tables [[calendar]] of the file, in their order.
[[nodiscard]] std::vector<CalendarSettings>
readCalendars(SettingsTable& file, SettingsReading& reading);

} // namespace lumora::companion
