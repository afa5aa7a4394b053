#pragma once

#include "companion/fetching/Web.h"
#include "companion/parts/Asking.h"
#include "companion/parts/Parts.h"
#include "companion/settings/ServiceSettings.h"

namespace lumora::companion {

/// Asks ActivityWatch how productive the day has been since `dayStart`, given its own categories.
/// `web` must outlive what comes of it.
[[nodiscard]] AskForPart<FocusPart> activityFocus(
    ActivitySettings settings, Web& web,
    std::function<std::chrono::sys_seconds(std::chrono::sys_seconds now)> dayStart);

} // namespace lumora::companion
