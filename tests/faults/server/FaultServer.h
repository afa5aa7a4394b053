#pragma once

#include "faults/FaultRow.h"
#include "support/ScriptedServer.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

namespace lumora::tests {

/// A service that has a fault.
class FaultServer {
public:
    explicit FaultServer(const Fault& fault);

    quint16 port() const;

    /// The file of the authority that signed the service's certificate; empty: it has none.
    QString authorityFile() const { return m_authorityFile; }

    /// How many connections were made, whether or not anything came of them.
    int connectionCount() const;

    /// How many whole requests were read.
    int requestCount() const;

    /// From now on every request is answered well.
    void recover();

private:
    std::unique_ptr<QTcpServer> makeListener(const Fault& fault);

    QString m_authorityFile;
    QTcpSocket m_closed; ///< keeps a port from others, without listening there
    bool m_isWell = false;
    QTcpServer* m_listener = nullptr;
    std::unique_ptr<ScriptedServer> m_server;
};

} // namespace lumora::tests
