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

    DemoServiceProcess() = default;
    ~DemoServiceProcess();
    DemoServiceProcess(const DemoServiceProcess&) = delete;
    DemoServiceProcess& operator=(const DemoServiceProcess&) = delete;

    /// Starts the service with the named day, the service's default when empty, and waits until
    /// it answers. The error is one line for the user.
    tl::expected<Address, QString> start(const QString& scenario);

private:
    QProcess m_process;
};

/// Reads the address from what the service prints at its start; absent until it is complete.
std::optional<DemoServiceProcess::Address> parseDemoAddress(const QByteArray& output);

} // namespace lumora
