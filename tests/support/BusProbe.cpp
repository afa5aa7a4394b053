#include "support/BusProbe.h"

#include "support/Patience.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDebug>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

QByteArray written(const QDBusMessage& message) {
    QString text;
    QDebug(&text) << message;
    return text.toUtf8();
}

BusProbe::BusProbe(const QDBusConnection& bus, const QString& service)
    : m_bus(bus)
    , m_service(service) {}

QDBusMessage BusProbe::call(
    const QString& path, const QString& interfaceName, const QString& method,
    const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, path, interfaceName, method);
    message.setArguments(arguments);
    const QDBusPendingCallWatcher pending(m_bus.asyncCall(message));
    // Caller and callee share this thread: waiting has to let events through.
    (void)QTest::qWaitFor([&] { return pending.isFinished(); }, patience);
    return pending.reply();
}

QVariant
BusProbe::property(const QString& path, const QString& interfaceName, const QString& name) {
    const QDBusMessage answer =
        call(path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interfaceName, name});
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    return answer.arguments().at(0).value<QDBusVariant>().variant();
}

QVariantMap BusProbe::allProperties(const QString& path, const QString& interfaceName) {
    const QDBusMessage answer =
        call(path, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {interfaceName});
    return qdbus_cast<QVariantMap>(answer.arguments().value(0));
}

QStringList BusProbe::introspect(const QString& path, const QString& interfaceName) {
    const QDBusMessage answer =
        call(path, u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s);
    QXmlStreamReader xml(answer.arguments().value(0).toString());
    QStringList names;
    bool wanted = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml.attributes().value("name"_L1).toString();
        if (xml.name() == u"interface")
            wanted = name == interfaceName;
        else if (wanted && xml.name() != u"arg")
            names += name;
    }
    return xml.hasError() ? QStringList() : names;
}

void BusProbe::listen(const QString& path, const QString& interfaceName) {
    m_bus.connect(m_service, path, interfaceName, {}, this, SLOT(keep(QDBusMessage)));
}

QList<QVariantList> BusProbe::signalsNamed(const QString& name) {
    settle();
    QList<QVariantList> found;
    for (const QDBusMessage& message : std::as_const(m_kept)) {
        if (message.member() == name)
            found += message.arguments();
    }
    return found;
}

QStringList BusProbe::signalNames() {
    settle();
    QStringList names;
    for (const QDBusMessage& message : std::as_const(m_kept))
        names += message.member();
    return names;
}

void BusProbe::forget() {
    settle();
    m_kept.clear();
}

void BusProbe::keep(const QDBusMessage& message) {
    m_kept += message;
}

// Messages of one sender arrive in order: once it has answered, its earlier signals are here.
void BusProbe::settle() {
    call(u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    QCoreApplication::processEvents();
}

} // namespace lumora::tests
