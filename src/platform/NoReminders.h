#pragma once

#include "platform/MeetingReminders.h"

namespace lumora {

/// Reminders for a desktop without notifications: there are none.
class NoReminders final : public MeetingReminders {
public:
    QCoro::Task<> requestAuthorization() override { co_return; }

    void scheduleUpcoming(const Briefing&) override {}
};

} // namespace lumora
