#pragma once

#include "briefing/Instant.h"
#include "linux/files/WholeFile.h"
#include "linux/http/ServiceProbe.h"
#include "linux/session/SessionProbe.h"
#include "platform/LoginItemRegistry.h"
#include "platform/SecretStore.h"

#include <QHash>
#include <QString>
#include <QUrl>

#include <optional>

namespace lumora {

/// What is known of the token, which is not part of it.
struct TokenEvidence {
    SecretLookup::Status status = SecretLookup::Status::Unavailable;
    bool isEmpty = false; ///< there is an item with nothing in it
    QString reason;       ///< why the keyring is unavailable
    QString keeper;       ///< the keyring, for people; empty: not known
};

struct LoginItemEvidence {
    LoginItemStatus status = LoginItemStatus::NotRegistered;
    QString place; ///< of the entry that counts
};

/// All that the links are judged by. What is absent did not answer in time, if not said otherwise.
struct Evidence {
    QString preferencesPath; ///< for people
    std::optional<tl::expected<QByteArray, ReadFailure>> preferences;
    QHash<QString, QString> settings; ///< what the preferences say
    std::optional<TokenEvidence> token;
    std::optional<ServiceProbe> service;
    bool askedService = false; ///< false: there was nowhere to ask
    Instant now;               ///< when the service was asked
    std::optional<SessionProbe> session;
    std::optional<bool> wakeService;
    std::optional<LoginItemEvidence> loginItem;
    QHash<QString, QString> environment; ///< those variables that are set to something
};

/// Where the service is; absent without an address that the token may go to.
[[nodiscard]] std::optional<QUrl> serviceUrl(const Evidence& evidence);

/// The proxy on the way there as "host:port", without what it is told of the user; empty without
/// one.
[[nodiscard]] QString proxyOnTheWay(const Evidence& evidence);

/// How far the way to the service was free. What goes through a proxy looks up no name and makes no
/// connection of its own. Absent where nobody was asked.
[[nodiscard]] std::optional<ServiceProbe::Stage> wayTo(const Evidence& evidence);

/// `url` without what may be secret in it: user, password, query and fragment.
[[nodiscard]] QString forPeople(const QUrl& url);

} // namespace lumora
