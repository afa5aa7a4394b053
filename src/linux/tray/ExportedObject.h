#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>

namespace lumora {

/// An object on the bus with one interface, described by the XML file of the interface's name.
/// Its properties are answered at the time of asking, so that one can be absent for a while,
/// which objects exported through the meta-object system cannot do.
class ExportedObject : public QDBusVirtualObject {
    Q_OBJECT

public:
    ~ExportedObject() override;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    ExportedObject(
        const QDBusConnection& bus, const QString& path, const QString& interfaceName,
        QObject* parent);

    /// The properties that the object has now, by name.
    virtual QVariantMap properties() const = 0;

    /// Somebody reads the property `name`, or all of them where it is empty.
    virtual void aboutToBeRead(const QString& /*name*/) {}

    /// Answers a call of the interface; false: there is no such method with these arguments.
    virtual bool handleCall(const QDBusMessage& call) = 0;

    void reply(const QDBusMessage& call, const QVariantList& results = {}) const;
    void fail(const QDBusMessage& call, QDBusError::ErrorType error, const QString& text) const;
    void sendSignal(const QString& name, const QVariantList& arguments = {}) const;
    void sendPropertiesChanged(const QVariantMap& changed, const QStringList& invalidated) const;

private:
    bool handlePropertyCall(const QDBusMessage& call);

    QDBusConnection m_bus;
    QString m_path;
    QString m_interface;
};

} // namespace lumora
