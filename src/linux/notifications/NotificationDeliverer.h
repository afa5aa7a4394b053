#pragma once

#include "linux/notifications/NotificationServer.h"
#include "platform/NotificationCenter.h"

#include <QObject>

#include <map>
#include <memory>
#include <vector>

namespace lumora {

class Alarm;
class Clock;

/// Has notifications shown whose time has come, and hears how the user reacts to them. One that
/// finds no server, or only one that is not ready, is tried again as long as it is worth showing;
/// one that a server has taken is never shown again.
class NotificationDeliverer final : public QObject {
    Q_OBJECT

public:
    /// Both collaborators must outlive the deliverer.
    NotificationDeliverer(NotificationServer& server, Clock& clock);
    ~NotificationDeliverer() override;

    /// Has the notification shown, in place of one with the same identifier that is still there.
    void deliver(const NotificationRequest& request);

    /// Gives up on what no server has been asked to show yet.
    void forgetUnsent();

Q_SIGNALS:
    /// The user reacted, in whatever way, to a notification with this content. Comes once for each.
    void responded(const QVariantMap& userInfo, const QByteArray& activationToken);

private:
    /// A notification that no server has confirmed.
    struct Unsent {
        NotificationRequest request;
        bool underWay = false; ///< the present server has been asked to show it
        int attempts = 0;      ///< how often a server has been asked
    };

    /// A notification as the user sees it.
    struct Standing {
        QString identifier;
        QVariantMap userInfo;
        QByteArray activationToken;
    };

    std::vector<Unsent>::iterator unsentOf(const QString& identifier);
    void sendAll();
    void send(Unsent& unsent, const NotificationAbilities& abilities);
    void onSent(const NotificationRequest& request, const ShownNotification& shown);
    void tryAgainLater();
    void dropHopeless();
    uint standingId(const QString& identifier) const;
    void onServerChanged();
    void onReaction(const ShownNotification& notification);

    NotificationServer& m_server;
    Clock& m_clock;
    std::unique_ptr<Alarm> m_retry;
    std::vector<Unsent> m_unsent; ///< one for each identifier, in the order of delivery
    std::map<ShownNotification, Standing> m_standing;
    bool m_asking = false; ///< the present server, for its abilities
    // Counts servers. A call outlives the server that it went to, and what becomes of it then says
    // nothing of the one that is there by now.
    int m_generation = 0;
};

} // namespace lumora
