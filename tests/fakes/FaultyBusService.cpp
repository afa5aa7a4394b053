#include "fakes/FaultyBusService.h"

#include <QDBusError>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

QVariantList nonsense() {
    return {
        QVariantMap{{u"\u202e{}"_s, -1}},
        QString(10'000, u'x'),
        QVariantList{1, u"two"_s, QVariantMap()},
        -7.5,
    };
}

} // namespace

class FaultyBusService::Answers final : public QDBusVirtualObject {
public:
    Answers(QDBusConnection connection, Fault fault)
        : m_connection(std::move(connection))
        , m_fault(fault) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        switch (m_fault) {
        case Fault::Hangs:
            break;
        case Fault::Refuses:
            m_connection.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
            break;
        case Fault::Babbles:
            m_connection.send(message.createReply(nonsense()));
            break;
        }
        return true;
    }

private:
    QDBusConnection m_connection;
    Fault m_fault;
};

FaultyBusService::FaultyBusService(PrivateBus& bus, const QString& name, Fault fault)
    : m_connection(bus.connect())
    , m_answers(std::make_unique<Answers>(m_connection, fault)) {
    m_connection.registerVirtualObject(u"/"_s, m_answers.get(), QDBusConnection::SubPath);
    m_answers->moveToThread(&m_thread);
    m_thread.start();
    m_connection.registerService(name);
}

FaultyBusService::~FaultyBusService() {
    QDBusConnection::disconnectFromBus(m_connection.name()); // as a crash would
    m_thread.quit();
    m_thread.wait();
}

void FaultyBusService::flood(
    const QString& path, const QString& interface, const QString& signal, int count) {
    for (int sent = 0; sent < count; ++sent) {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(nonsense());
        m_connection.send(message);
    }
}

void PrintTo(FaultyBusService::Fault fault, std::ostream* out) {
    using Fault = FaultyBusService::Fault;
    switch (fault) {
    case Fault::Hangs:
        *out << "Hangs";
        break;
    case Fault::Refuses:
        *out << "Refuses";
        break;
    case Fault::Babbles:
        *out << "Babbles";
        break;
    }
}

} // namespace lumora::tests
