#pragma once

#include "linux/notifications/NotificationScheduler.h"
#include "platform/Clock.h"
#include "platform/NotificationCenter.h"

#include <map>
#include <vector>

namespace lumora::tests {

/// A notification centre of which only the showing is left out.
class InvisibleCenter final : public NotificationCenter {
public:
    explicit InvisibleCenter(Clock& clock)
        : m_scheduler(clock, [this, &clock](const NotificationRequest& request) {
            shown[request.identifier].push_back(clock.now());
        }) {}

    QCoro::Task<bool> requestAuthorization() override { co_return true; }

    QCoro::Task<QStringList> pendingIdentifiers() override {
        co_return m_scheduler.pendingIdentifiers();
    }

    void removePending(const QStringList& identifiers) override { m_scheduler.remove(identifiers); }

    void removeAllPending() override { m_scheduler.removeAll(); }

    void add(const NotificationRequest& request) override { m_scheduler.add(request); }

    std::map<QString, std::vector<Instant>> shown; ///< by identifier: when it was handed over

private:
    NotificationScheduler m_scheduler;
};

} // namespace lumora::tests
