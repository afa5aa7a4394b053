#pragma once

#include "faults/FaultRow.h"

#include <QProcess>

namespace lumora::tests {

/// The process of the service that has the fault of a row, and beside it of one that is well.
class FaultService {
public:
    /// Where the client has to go, and what its environment says then.
    struct Way {
        QString endpoint;
        QByteArray proxy;     ///< what https_proxy says; empty: nothing
        QByteArray authority; ///< what SSL_CERT_FILE says; empty: nothing
    };

    /// What has come in since the row began.
    struct Count {
        int connections = 0;
        int requests = 0;
        int goodRequests = 0; ///< of the service that is well, since the process began

        bool operator==(const Count&) const = default;
    };

    /// Throws when the process does not start.
    FaultService();
    ~FaultService();
    FaultService(const FaultService&) = delete;
    FaultService& operator=(const FaultService&) = delete;

    /// Begins the row, and ends the one before.
    Way begin(const FaultRow& row);

    /// The address of the service that is well; known once a row has begun.
    QString goodEndpoint() const { return m_goodEndpoint; }

    Count count();

    /// Has the row's service answer well from now on.
    void recover();

    /// Waits until as much has come in; false when it does not.
    bool comesToCount(int connections, int requests);

private:
    QList<QByteArray> ask(const QByteArray& question);

    QProcess m_process;
    QString m_goodEndpoint;
};

} // namespace lumora::tests
