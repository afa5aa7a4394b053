#pragma once

#include "briefing/Briefing.h"

#include <QLocale>
#include <QTimeZone>

namespace lumora {

/// What label, tooltip and panel show of `briefing` at `now`, for people who write a service:
/// lines, each ended, of which no part is obeyed by a terminal. Of the spending only that there is
/// one: its amounts stay hidden until they are revealed.
[[nodiscard]] QString checkedBriefing(
    const Briefing& briefing, Instant now, const QTimeZone& zone = QTimeZone::systemTimeZone(),
    const QLocale& locale = QLocale::system());

} // namespace lumora
