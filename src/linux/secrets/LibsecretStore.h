#pragma once

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
/// Nothing is kept between calls. A call that finds the keyring locked says so, and the user is
/// asked in the background to unlock it, once per locking.
class LibsecretStore final : public SecretStore {
    Q_OBJECT

public:
    /// How long a removal or an addition may take, and half of what a look-up may: either of them,
    /// and one after the other, stays below two seconds.
    static constexpr std::chrono::milliseconds defaultTimeout{900};

    /// How long it lets news gather before it tells of them. One change makes a burst of signals,
    /// and a service that dies again at once is not worth asking.
    static constexpr std::chrono::milliseconds settlingTime{50};

    /// The address of the user's session bus; empty when there is none. Starts none.
    static QString sessionBusAddress();

    /// `bus` carries the news from the service on the bus at `busAddress`, where the calls go.
    explicit LibsecretStore(
        QDBusConnection bus, QString busAddress = sessionBusAddress(),
        std::chrono::milliseconds timeout = defaultTimeout);

    [[nodiscard]] SecretLookup lookup(const SecretKey& key) override;
    [[nodiscard]] bool
    add(const SecretKey& key, const QString& label, const QByteArray& secret) override;
    [[nodiscard]] SecretRemoval remove(const SecretKey& key) override;

    /// Of whatever owns the service's name at the moment; it is not started for this.
    [[nodiscard]] QString keeper() override;

    /// What people call the keyring whose process is called `process`; empty for an unknown one.
    static QString keyringOf(const QString& process);

private:
    [[nodiscard]] SecretLookup ask(const SecretKey& key);
    [[nodiscard]] SecretLookup askWithoutItems(SecretConversation& conversation);
    void itemTouched(const SecretAttributes& attributes);
    void becameReachable();

    QDBusConnection m_bus;
    const QString m_busAddress;
    const std::chrono::milliseconds m_timeout;
    SecretServiceMonitor m_monitor;
    SecretUnlocker m_unlocker;
    QList<SecretKey> m_keys; ///< those that were looked up
    bool m_found = false;    ///< the last look-up had a secret
    QTimer m_settling;
};

} // namespace lumora
