#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace lumora::tests {

/// A message bus of the test's own that ends with this object. Nothing that is installed on the
/// machine is started by it.
class PrivateBus {
public:
    /// `services` is the folder of those that it starts by itself; without it there are none.
    explicit PrivateBus(const QString& services = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// The bus's address, as in DBUS_SESSION_BUS_ADDRESS.
    QString address() const { return m_address; }

    /// A new connection with a unique name of its own, closed with this object.
    QDBusConnection connect();

    /// Ends the bus at once, as a crash would.
    void kill();

private:
    QProcess m_daemon;
    QString m_address;
    QStringList m_connectionNames;
};

} // namespace lumora::tests
