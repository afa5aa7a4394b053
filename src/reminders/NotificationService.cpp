#include "reminders/NotificationService.h"

#include "platform/Spawn.h"
#include "reminders/ReminderPlan.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

NotificationService::NotificationService(
    NotificationCenter& center, const Preferences& preferences, const Clock& clock)
    : m_center(center)
    , m_preferences(preferences)
    , m_clock(clock)
    , m_enabled(preferences, PreferenceKeys::notifyBeforeMeetings) {}

QCoro::Task<> NotificationService::requestAuthorization() {
    if (!m_enabled.wrappedValue())
        co_return;
    const QPointer<NotificationService> self(this);
    const bool granted = co_await m_center.requestAuthorization();
    if (self)
        m_authorized = granted;
}

void NotificationService::scheduleUpcoming(const Briefing& briefing) {
    if (m_enabled.wrappedValue())
        spawn(reconcile(briefing));
    else
        m_center.removeAllPending();
}

// The user may have changed their mind while a question was open.
bool NotificationService::mayRemind() const {
    return m_authorized && m_enabled.wrappedValue();
}

QCoro::Task<> NotificationService::reconcile(Briefing briefing) {
    const QPointer<NotificationService> self(this);
    if (!m_authorized)
        co_await requestAuthorization();
    if (!self || !mayRemind())
        co_return;

    // One moment decides on all events, however long the centre takes to tell what is pending.
    const auto events = remindedEvents(briefing, m_clock.now());
    const QStringList pending = co_await m_center.pendingIdentifiers();
    if (!self || !mayRemind())
        co_return;

    const QStringList stale = staleIdentifiers(pending, events);
    if (!stale.isEmpty())
        m_center.removePending(stale);
    const LinkPolicy links = linkPolicy(m_preferences);
    for (const BriefEvent& event : events)
        m_center.add(reminderRequest(event, m_clock.now(), links));
}

} // namespace lumora
