#pragma once

#include "briefing/Instant.h"

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace lumora {

/// A notification that is to be shown at its time, with the desktop's sound for messages.
struct NotificationRequest {
    QString identifier;                 ///< whatever has the same one is the same notification
    QString title = {};                 ///< plain text
    QString body = {};                  ///< plain text
    QVariantMap userInfo = {};          ///< comes back with the user's response; empty: nothing
    std::optional<QString> button = {}; ///< label of a button that responds as a click does
    Instant fireTime = {};              ///< by the wall clock; one that has passed means at once
    std::optional<Instant> usefulUntil = {}; ///< it should stay until then; absent: for a moment

    bool operator==(const NotificationRequest&) const = default;
};

/// The desktop's notifications: takes requests ahead of time and shows each when its time comes.
class NotificationCenter : public QObject {
    Q_OBJECT

public:
    /// Asks for permission to alert and to play sounds; false when it is refused, or when there is
    /// nobody who could grant it.
    virtual QCoro::Task<bool> requestAuthorization() = 0;

    /// The identifiers of the requests whose time has not come.
    virtual QCoro::Task<QStringList> pendingIdentifiers() = 0;

    /// Withdraws the pending requests that have one of the identifiers.
    virtual void removePending(const QStringList& identifiers) = 0;

    /// Withdraws every request that has not been shown.
    virtual void removeAllPending() = 0;

    /// Adds a request, in place of a pending one with the same identifier.
    virtual void add(const NotificationRequest& request) = 0;

Q_SIGNALS:
    /// The user reacted to a notification that was shown, in whatever way. The activation token is
    /// empty where the desktop gave none.
    void responded(const QVariantMap& userInfo, const QByteArray& activationToken);

    /// A request for permission that failed would succeed by now.
    void authorizable();
};

} // namespace lumora
