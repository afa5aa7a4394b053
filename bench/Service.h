#pragma once

#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QString>

#include <memory>

namespace lumora {

/// The user's service: the same briefing to whoever asks, over TLS on the loopback interface.
class Service {
public:
    Service();

    /// Of the briefing.
    QString address() const;

    /// The file with the certificate that its own is trusted by.
    QString authority() const { return m_certificates.authorityFile(); }

    /// How many requests have come so far.
    qsizetype answers() const { return m_server->requests().size(); }

private:
    tests::TestCertificates m_certificates;
    std::unique_ptr<tests::ScriptedServer> m_server;
};

} // namespace lumora
