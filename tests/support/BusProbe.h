#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace lumora::tests {

/// `message` with all that it carries, as text.
[[nodiscard]] QByteArray written(const QDBusMessage& message);

/// Another program on the bus, looking at the objects of `service`: it calls them, and keeps the
/// signals that they send.
class BusProbe : public QObject {
    Q_OBJECT

public:
    /// `bus` is a connection of the probe's own.
    BusProbe(const QDBusConnection& bus, const QString& service);

    /// Calls a method and waits, with the event loop running, for its answer.
    QDBusMessage call(
        const QString& path, const QString& interfaceName, const QString& method,
        const QVariantList& arguments = {});

    /// A property as its owner answers it; invalid when it answers with an error.
    QVariant property(const QString& path, const QString& interfaceName, const QString& name);

    QVariantMap allProperties(const QString& path, const QString& interfaceName);

    /// The names of what an object's description lists for one of its interfaces: properties,
    /// methods and signals. Empty when the description is not well-formed.
    QStringList introspect(const QString& path, const QString& interfaceName);

    /// Keeps the signals of an interface of an object from now on.
    void listen(const QString& path, const QString& interfaceName);

    /// The arguments of the signals called `name` since the last `forget()`, after everything
    /// that was sent before has arrived.
    QList<QVariantList> signalsNamed(const QString& name);

    /// The names of all signals since the last `forget()`, in order.
    QStringList signalNames();

    void forget();

private Q_SLOTS:
    void keep(const QDBusMessage& message);

private:
    void settle();

    QDBusConnection m_bus;
    QString m_service;
    QList<QDBusMessage> m_kept;
};

} // namespace lumora::tests
