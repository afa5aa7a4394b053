#pragma once

#include "linux/secrets/GioDeadline.h"
#include "linux/secrets/SecretFailure.h"
#include "platform/SecretStore.h"

#include <libsecret/secret.h>

#include <vector>

namespace lumora {

/// One conversation with the Secret Service, on a connection of its own, so that neither a service
/// nor a bus that died leaves anything behind for the next one. The whole of it is over when its
/// time is up, and no part of it shows a prompt.
class SecretConversation {
public:
    SecretConversation(QString busAddress, std::chrono::milliseconds timeout);

    /// Connects. To be called first; nothing else may be called when it fails.
    [[nodiscard]] SecretOutcome<void> open();

    /// Every item with the key's attributes; with their secrets, where those can be read, if
    /// `flags` says so.
    [[nodiscard]] SecretOutcome<std::vector<GioPointer<SecretItem>>>
    search(const SecretKey& key, SecretSearchFlags flags);

    /// The collection with the alias; null when there is none.
    [[nodiscard]] SecretOutcome<GioPointer<SecretCollection>> collection(const char* alias);

    /// Adds an item with exactly the key's attributes, in place of one that has the same.
    [[nodiscard]] SecretOutcome<void> createItem(
        SecretCollection& collection, const SecretKey& key, const QString& label,
        const QByteArray& secret);

    [[nodiscard]] SecretOutcome<void> removeItem(SecretItem& item);

private:
    tl::unexpected<SecretFailure> failure(GError* error) const;

    const QString m_busAddress;
    GioDeadline m_deadline; // last to go
    GioPointer<GDBusConnection> m_connection;
    GioPointer<SecretService> m_service;
};

} // namespace lumora
