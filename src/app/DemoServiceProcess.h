#pragma once

#include <QProcess>
#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// The service that the demo fetches from: a process of its own on a loopback port, which ends
/// with this object and cannot outlive the program.
class DemoServiceProcess {
public:
    /// Where the service answers, and the token that it takes.
    struct Address {
        QString endpoint;
        QString token;
    };

    /// Why the service did not start.
    struct Failure {
        QString sentence; ///< one line for the user
        int exitCode = 1; ///< the service's own, if it came to one
    };

    DemoServiceProcess() = default;
    ~DemoServiceProcess();
    DemoServiceProcess(const DemoServiceProcess&) = delete;
    DemoServiceProcess& operator=(const DemoServiceProcess&) = delete;

    /// Starts the service with the named day, the service's default when empty, and waits until
    /// it answers.
    tl::expected<Address, Failure> start(const QString& scenario);

private:
    Failure failure();

    QProcess m_process;
};

/// Reads the address from what the service prints at its start; absent until it is complete.
std::optional<DemoServiceProcess::Address> parseDemoAddress(const QByteArray& output);

} // namespace lumora
