#pragma once

#include "reminders/MeetingReminders.h"

#include <vector>

namespace lumora::tests {

/// Reminders that only remember what they were asked for.
class RecordingReminders final : public MeetingReminders {
public:
    QCoro::Task<> requestAuthorization() override {
        ++authorizationRequests;
        co_return;
    }

    void scheduleUpcoming(const Briefing& briefing) override { scheduled.push_back(briefing); }

    int authorizationRequests = 0;
    std::vector<Briefing> scheduled; ///< every briefing handed over, in order
};

} // namespace lumora::tests
