#include "linux/tray/StatusAreaHost.h"

#include <QDBusMessage>
#include <QFile>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

QString processName(uint process) {
    QFile file(u"/proc/%1/comm"_s.arg(process));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll().trimmed()) : QString();
}

StatusAreaHost::StatusAreaHost(const QDBusConnection& bus, NameOf nameOf, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
    , m_nameOf(std::move(nameOf)) {}

void StatusAreaHost::look(const QString& owner) {
    m_question.reset();
    if (owner.isEmpty()) {
        setProcess({});
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
        u"GetConnectionUnixProcessID"_s);
    call << owner;
    m_question = std::make_unique<QDBusPendingCallWatcher>(m_bus.asyncCall(call));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this, [this] {
        // The question is the caller here and must outlive the call.
        auto* const answered = m_question.release();
        answered->deleteLater();
        bool isProcess = false;
        const uint process = answered->reply().arguments().value(0).toUInt(&isProcess);
        setProcess(isProcess ? m_nameOf(process) : QString());
    });
}

void StatusAreaHost::setProcess(const QString& process) {
    if (std::exchange(m_process, process) != process)
        Q_EMIT changed();
}

} // namespace lumora
