#pragma once

#include "companion/settings/ServiceSettings.h"
#include "companion/settings/SettingsReading.h"
#include "companion/settings/SettingsTable.h"

#include <optional>
#include <string_view>
#include <vector>

namespace lumora::companion {

/// The tables [[habit]] of the file, in their order.
[[nodiscard]] std::vector<HabitSettings> readHabits(SettingsTable& file, SettingsReading& reading);

/// The tables [[chore]] of the file, in their order.
[[nodiscard]] std::vector<ChoreSettings> readChores(SettingsTable& file, SettingsReading& reading);

/// The table [key], a command that stands for the whole list; absent when there is none.
[[nodiscard]] std::optional<ListCommand>
readListCommand(SettingsTable& file, std::string_view key, SettingsReading& reading);

} // namespace lumora::companion
