#include "linux/tray/ExportedObject.h"

#include <QDBusVariant>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QLatin1StringView propertiesInterface("org.freedesktop.DBus.Properties");

} // namespace

ExportedObject::ExportedObject(
    const QDBusConnection& bus, const QString& path, const QString& interfaceName, QObject* parent)
    : QDBusVirtualObject(parent)
    , m_bus(bus)
    , m_path(path)
    , m_interface(interfaceName) {
    m_bus.registerVirtualObject(m_path, this);
}

ExportedObject::~ExportedObject() {
    m_bus.unregisterObject(m_path);
}

QString ExportedObject::introspect(const QString& /*path*/) const {
    QFile file(u":/dbus/%1.xml"_s.arg(m_interface));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // The bus library writes the surrounding node, and its own interfaces, by itself.
    const QString xml = QString::fromUtf8(file.readAll());
    const qsizetype from = xml.indexOf(u"<interface");
    return xml.mid(from, xml.lastIndexOf(u"</node>") - from);
}

bool ExportedObject::handleMessage(
    const QDBusMessage& message, const QDBusConnection& /*connection*/) {
    if (message.interface() == propertiesInterface)
        return handlePropertyCall(message);
    // The protocol lets a caller leave the interface out.
    if (!message.interface().isEmpty() && message.interface() != m_interface)
        return false;
    // Some hosts try one method after another, and go on after no other error.
    if (!handleCall(message))
        fail(message, QDBusError::UnknownMethod, u"No method %1 here"_s.arg(message.member()));
    return true;
}

bool ExportedObject::handlePropertyCall(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const QString about = arguments.value(0).toString();
    if (!about.isEmpty() && about != m_interface) {
        fail(call, QDBusError::UnknownInterface, u"No interface %1 here"_s.arg(about));
        return true;
    }
    if (call.member() == u"GetAll" && call.signature() == u"s") {
        aboutToBeRead({});
        reply(call, {properties()});
        return true;
    }
    const QString name = arguments.value(1).toString();
    const QVariantMap all = properties();
    if (call.member() == u"Get" && call.signature() == u"ss") {
        if (all.contains(name)) {
            aboutToBeRead(name);
            reply(call, {QVariant::fromValue(QDBusVariant(all.value(name)))});
        } else {
            fail(call, QDBusError::UnknownProperty, u"No property %1 now"_s.arg(name));
        }
        return true;
    }
    if (call.member() == u"Set" && call.signature() == u"ssv") {
        fail(call, QDBusError::PropertyReadOnly, u"Property %1 is read-only"_s.arg(name));
        return true;
    }
    return false;
}

void ExportedObject::reply(const QDBusMessage& call, const QVariantList& results) const {
    if (call.isReplyRequired())
        m_bus.send(call.createReply(results));
}

void ExportedObject::fail(
    const QDBusMessage& call, QDBusError::ErrorType error, const QString& text) const {
    if (call.isReplyRequired())
        m_bus.send(call.createErrorReply(error, text));
}

void ExportedObject::sendSignal(const QString& name, const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createSignal(m_path, m_interface, name);
    message.setArguments(arguments);
    m_bus.send(message);
}

void ExportedObject::sendPropertiesChanged(
    const QVariantMap& changed, const QStringList& invalidated) const {
    QDBusMessage message =
        QDBusMessage::createSignal(m_path, propertiesInterface, u"PropertiesChanged"_s);
    message.setArguments({m_interface, changed, invalidated});
    m_bus.send(message);
}

} // namespace lumora
