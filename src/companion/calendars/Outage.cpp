#include "companion/calendars/Outage.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

std::optional<AgendaEvent> outageEvent(
    const QString& name, std::optional<std::chrono::sys_seconds> failingSince,
    std::chrono::sys_seconds now, std::chrono::sys_seconds dayStart,
    std::chrono::sys_seconds dayEnd) {
    if (!failingSince || now - *failingSince < quietOutage)
        return std::nullopt;
    const auto hours = std::chrono::floor<std::chrono::hours>(now - *failingSince).count();
    return AgendaEvent{
        .title = hours < 48 ? u"%1: not updated for %2 hours"_s.arg(name).arg(hours)
                            : u"%1: not updated for %2 days"_s.arg(name).arg(hours / 24),
        .allDay = true,
        .start = dayStart,
        .end = dayEnd,
        .location = std::nullopt,
        .meetingUrl = std::nullopt,
        .calendar = name};
}

} // namespace lumora::companion
