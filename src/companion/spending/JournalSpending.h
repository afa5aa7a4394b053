#pragma once

#include "companion/fetching/Commands.h"
#include "companion/parts/Asking.h"
#include "companion/parts/Parts.h"
#include "companion/settings/ServiceSettings.h"

#include <QTimeZone>

namespace lumora::companion {

/// Asks hledger, whose journal is read by nobody else, what was spent this month and in the one
/// before. `commands` must outlive what comes of it; `zone` is where the user is.
[[nodiscard]] AskForPart<SpendingPart>
journalSpending(JournalSettings settings, Commands& commands, std::function<QTimeZone()> zone);

} // namespace lumora::companion
