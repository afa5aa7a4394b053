#pragma once

#include "briefing/Briefing.h"

#include <QCoroTask>

namespace lumora {

/// Keeps the reminders ahead of meetings in step with the briefing.
class MeetingReminders {
public:
    virtual ~MeetingReminders() = default;

    /// Asks for permission to notify, where the user wants reminders at all.
    [[nodiscard]] virtual QCoro::Task<> requestAuthorization() = 0;

    /// Brings the pending reminders into line with `briefing`. Returns at once.
    virtual void scheduleUpcoming(const Briefing& briefing) = 0;
};

} // namespace lumora
