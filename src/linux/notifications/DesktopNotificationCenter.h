#pragma once

#include "linux/notifications/NotificationDeliverer.h"
#include "linux/notifications/NotificationScheduler.h"
#include "linux/notifications/NotificationServer.h"
#include "platform/NotificationCenter.h"

#include <QDBusConnection>

#include <memory>
#include <vector>

namespace lumora {

template <typename Value>
class Completion;

/// Notifications over org.freedesktop.Notifications. That interface knows no later time, so the
/// requests wait in this process. Whoever answers there grants the permission: what may be shown
/// and heard is the server's own setting.
class DesktopNotificationCenter final : public NotificationCenter {
    Q_OBJECT

public:
    /// `clock` must outlive the centre.
    DesktopNotificationCenter(const QDBusConnection& bus, Clock& clock);

    /// Answers whoever still waits, so that nobody waits forever for a centre that is gone.
    ~DesktopNotificationCenter() override;

    QCoro::Task<bool> requestAuthorization() override;
    QCoro::Task<QStringList> pendingIdentifiers() override;
    void removePending(const QStringList& identifiers) override;
    void removeAllPending() override;
    void add(const NotificationRequest& request) override;

private:
    using Answer = std::shared_ptr<Completion<bool>>;

    Answer askForServer();

    NotificationServer m_server;
    NotificationDeliverer m_deliverer;
    NotificationScheduler m_scheduler;
    std::vector<Answer> m_awaited;
    bool m_refused = false; ///< the latest request for permission
};

} // namespace lumora
