#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace lumora {

/// Asks the user, through the Secret Service's own prompt and in the background, to unlock a
/// collection: once each time that it is locked. Who dismisses the prompt is not asked again
/// until the collection is locked anew or the service is started anew.
class SecretUnlocker final : public QObject {
    Q_OBJECT

public:
    explicit SecretUnlocker(QDBusConnection bus);

    /// The collection at `collectionPath` was found locked. Returns at once.
    void foundLocked(const QString& collectionPath);

    /// A call found nothing locked: when it finds something locked again, that is a new locking.
    void foundUnlocked();

    /// The collection was reported unlocked: the next time that it is locked is a new locking.
    void unlockReported(const QString& collectionPath);

    /// The service came or went, and with it every prompt.
    void serviceChanged();

Q_SIGNALS:
    /// The user has unlocked what was asked for.
    void unlocked();

private Q_SLOTS:
    void promptCompleted(const QDBusMessage& message);

private:
    enum class Progress { Idle, Checking, Asked };

    void check();
    void unlock();
    void showPrompt(const QString& promptPath);
    void forgetPrompt();

    QDBusConnection m_bus;
    Progress m_progress = Progress::Idle;
    QString m_collection; ///< empty while idle
    QString m_prompt;     ///< the prompt that is shown; empty when none is
};

} // namespace lumora
