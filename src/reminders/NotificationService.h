#pragma once

#include "platform/AppStorageBacked.h"
#include "platform/Clock.h"
#include "platform/NotificationCenter.h"
#include "reminders/MeetingReminders.h"

#include <QObject>

namespace lumora {

/// Reminds of meetings five minutes ahead. Every briefing brings the notification centre's pending
/// requests into line, however often it comes; whatever is pending there is taken for a reminder.
class NotificationService final : public QObject, public MeetingReminders {
public:
    /// The collaborators must outlive the service, which may end in the middle of anything.
    NotificationService(
        NotificationCenter& center, const Preferences& preferences, const Clock& clock);

    [[nodiscard]] QCoro::Task<> requestAuthorization() override;
    void scheduleUpcoming(const Briefing& briefing) override;

private:
    [[nodiscard]] QCoro::Task<> reconcile(Briefing briefing);
    [[nodiscard]] bool mayRemind() const;

    NotificationCenter& m_center;
    const Preferences& m_preferences;
    const Clock& m_clock;
    AppStorageBacked<bool> m_enabled; ///< the user wants reminders; read afresh on every use
    bool m_authorized = false;        ///< the answer to the latest request for permission
};

} // namespace lumora
