#pragma once

#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QString>

#include <optional>
#include <ostream>
#include <vector>

namespace lumora::tests {

/// What stands where a service should be, and how the client gets there.
struct Fault {
    enum class Door {
        Closed,    ///< nobody listens at the port
        Plain,     ///< TCP
        Encrypted, ///< TLS
        Tunnel, ///< a proxy that does what CONNECT asks for, and is the service behind it as well
    };

    Door door = Door::Plain;
    ScriptedServer::Script script;     ///< what is done with each request
    ScriptedServer::Greeting greeting; ///< what is done with each connection; empty: nothing
    TestCertificates::Server certificate = TestCertificates::Server::Valid;
    QByteArray tlsVersion; ///< the only one spoken, as OpenSSL names it; empty: the usual ones
    bool wantsCertificate = false; ///< of the client
    bool isTrusted = true;         ///< the client trusts the authority that signed the certificate
    QString address = QStringLiteral("http://127.0.0.1:%1/api/briefing"); ///< %1: the port
    QString proxy; ///< what https_proxy says, with %1 for the port; empty: nothing
};

/// How a fetch ends, as `lumora status` tells it.
struct FetchEnd {
    QString state;
    std::optional<QString> message; ///< absent: no failure

    bool operator==(const FetchEnd&) const = default;
};

/// One row of the table.
struct FaultRow {
    const char* name; ///< unique
    FetchEnd end;
    int tries;    ///< how often the client begins an exchange
    int requests; ///< how many whole requests get there
    Fault fault;

    /// How many connections are made: one for each try and each redirect, as far as anybody is
    /// there.
    int connections() const;

    /// Whether it takes as long as the client's patience.
    bool endsByALimit() const;

    /// Whether the service could mend its ways where it is.
    bool canRecover() const;
};

/// The fetch brings a briefing.
FetchEnd loaded();
/// It fails with this message.
FetchEnd failed(const QString& message);

FetchEnd timedOut();
FetchEnd closed();
/// Something came, but nothing that can be used.
FetchEnd invalid();
FetchEnd serverError(int status);
FetchEnd noHandshake(const QString& reason = {});

/// How gtest prints them in messages: a row by its name.
void PrintTo(const FetchEnd& end, std::ostream* out);
void PrintTo(const FaultRow& row, std::ostream* out);

} // namespace lumora::tests
