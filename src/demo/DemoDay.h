#pragma once

#include "briefing/Instant.h"
#include "demo/DemoData.h"
#include "demo/DemoScenario.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTimeZone>

namespace lumora {

/// The demo's day as JSON.
///
/// The events are laid out once, around the instant `dayFrom`: "in 12 minutes" means 12 minutes
/// after `dayFrom`, whatever the service's clock shows by now. So time passing, or the clock being
/// moved, brings the meetings nearer as in a real day; to move the meetings themselves, lay the day
/// out from another instant.
///
/// The busy day holds, in minutes from `dayFrom`: two meetings that ended, a meeting in progress
/// (-10 to 35), one in 12 minutes, an all-day entry, a seven-hour block (-90 to 330), two meetings
/// at the same time (75), one without link or location, and one with a long title in several
/// scripts. Nothing else starts between 12 and 75, so that 20 minutes later no meeting is near and
/// the meeting that was in 12 minutes is the one in progress that ends first.

/// The events of `scenario`, in order of start, all-day entries first. Times are local in `zone`.
QJsonArray demoEvents(DemoScenario scenario, Instant dayFrom, const QTimeZone& zone);

/// The whole briefing except its "generatedAt": the day at `dayFrom` as it looks at `now`. In
/// every scenario but `Malformed` it is a valid one.
QJsonObject demoBriefing(
    DemoScenario scenario, Instant dayFrom, Instant now, const DemoData& data,
    const QTimeZone& zone);

} // namespace lumora
