#pragma once

#include "linux/secrets/LibsecretStore.h"
#include "support/BusProbe.h"
#include "support/Patience.h"

namespace lumora::tests {

/// Lets everything happen that a store on this connection, its secret service and its own timer
/// still have to do.
inline void settle(const QDBusConnection& connection) {
    // The longest of their conversations: a signal, a question about it, a request for a prompt,
    // and the prompt. Neither side lets a message overtake another.
    constexpr int turns = 5;
    BusProbe probe(connection, QStringLiteral("org.freedesktop.secrets"));
    for (int turn = 0; turn < turns; ++turn) {
        probe.call(
            QStringLiteral("/org/freedesktop/secrets"),
            QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("ReadAlias"),
            {QStringLiteral("default")});
        drainEvents();
    }
    outlastTimers(LibsecretStore::settlingTime);
}

} // namespace lumora::tests
