#pragma once

#include "platform/Clock.h"
#include "platform/NotificationCenter.h"

#include <functional>
#include <memory>
#include <vector>

namespace lumora {

/// Keeps notifications until their time has come by the wall clock, and hands each over once. It
/// sleeps until the first of them is due.
class NotificationScheduler {
public:
    using Deliver = std::function<void(const NotificationRequest&)>;

    /// `clock` must outlive the scheduler; `deliver` must not destroy it.
    NotificationScheduler(Clock& clock, Deliver deliver);

    /// Adds a request, in place of the one with the same identifier. One whose time has passed is
    /// handed over from the event loop.
    void add(const NotificationRequest& request);

    void remove(const QStringList& identifiers);
    void removeAll();

    /// Of the requests whose time has not come, in the order in which those were added. What is
    /// due is handed over first: right after a sleep, somebody may ask before the alarm rings.
    QStringList pendingIdentifiers();

private:
    void handOver();
    void sleepUntil(std::optional<Instant> time);

    Clock& m_clock;
    Deliver m_deliver;
    std::vector<NotificationRequest> m_pending;
    std::unique_ptr<Alarm> m_alarm;
};

} // namespace lumora
