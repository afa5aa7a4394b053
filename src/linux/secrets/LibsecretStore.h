#pragma once

#include "linux/secrets/SecretFailure.h"
#include "linux/secrets/SecretOutage.h"
#include "linux/secrets/SecretServiceMonitor.h"
#include "linux/secrets/SecretUnlocker.h"
#include "platform/SecretStore.h"

#include <QTimer>

#include <chrono>

namespace lumora {

class SecretConversation;

/// The user's keyring: whatever provides the freedesktop.org Secret Service. Items are found by
/// their attributes `service` and `account`, whatever other attributes or schema they carry, and
/// are added with exactly these two, to the default collection.
///
/// Of a call nothing is kept but that nobody answered. One that finds the keyring locked says so;
/// one that was to change something then also has the user asked to unlock it.
class LibsecretStore final : public SecretStore {
    Q_OBJECT

public:
    /// How long a call may take. A keyring that is well takes some twentieth of it.
    static constexpr std::chrono::milliseconds defaultTimeout{500};

    /// How long it lets news gather before it tells of them. One change makes a burst of signals,
    /// and a service that dies again at once is not worth asking.
    static constexpr std::chrono::milliseconds settlingTime{50};

    /// The address of the user's session bus; empty when there is none. Starts none.
    static QString sessionBusAddress();

    /// `bus` carries the news from the service on the bus at `busAddress`, where the calls go.
    explicit LibsecretStore(
        QDBusConnection bus, QString busAddress = sessionBusAddress(),
        std::chrono::milliseconds timeout = defaultTimeout,
        SecretOutage::Now now = &std::chrono::steady_clock::now);

    [[nodiscard]] SecretLookup lookup(const SecretKey& key) override;
    [[nodiscard]] bool
    add(const SecretKey& key, const QString& label, const QByteArray& secret) override;
    [[nodiscard]] SecretRemoval remove(const SecretKey& key) override;

    void askToUnlock() override;

    /// Of whatever owns the service's name at the moment; it is not started for this.
    [[nodiscard]] QString keeper() override;

    /// What people call the keyring whose process is called `process`; empty for an unknown one.
    static QString keyringOf(const QString& process);

private:
    [[nodiscard]] std::optional<SecretFailure> refusal() const;
    [[nodiscard]] SecretLookup ask(const SecretKey& key);
    [[nodiscard]] SecretLookup askWithoutItems(SecretConversation& conversation);
    [[nodiscard]] SecretLookup lockedIn(const QString& collectionPath);
    [[nodiscard]] SecretLookup failed(const SecretFailure& failure);
    void noticeSilence(const SecretFailure& failure);
    void serviceAnswered();
    void itemTouched(const SecretAttributes& attributes);
    void becameReachable();

    QDBusConnection m_bus;
    const QString m_busAddress;
    const std::chrono::milliseconds m_timeout;
    SecretServiceMonitor m_monitor;
    SecretUnlocker m_unlocker;
    SecretOutage m_outage;
    QString m_lockedCollection; ///< that the last look-up came upon; empty: none
    QList<SecretKey> m_keys;    ///< those that were looked up
    bool m_found = false;       ///< the last look-up had a secret
    QTimer m_settling;
};

} // namespace lumora
