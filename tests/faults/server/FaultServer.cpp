#include "faults/server/FaultServer.h"

#include "faults/Behaviours.h"
#include "support/WeakTls.h"

#include <QSslServer>
#include <QSslSocket>

#include <map>

namespace lumora::tests {

namespace {

using Door = Fault::Door;

/// Counts connections before anything has come of them.
template <typename Listener>
class Counting : public Listener {
public:
    int count = 0;

protected:
    void incomingConnection(qintptr descriptor) override {
        ++count;
        Listener::incomingConnection(descriptor);
    }
};

/// TCP that may turn into TLS.
class TunnelListener : public QTcpServer {
public:
    explicit TunnelListener(QSslConfiguration configuration)
        : m_configuration(std::move(configuration)) {}

protected:
    void incomingConnection(qintptr descriptor) override {
        auto* const connection = new QSslSocket(this);
        connection->setSslConfiguration(m_configuration);
        connection->setSocketDescriptor(descriptor);
        addPendingConnection(connection);
    }

private:
    QSslConfiguration m_configuration;
};

/// The certificates of this kind, which take a moment to make.
const TestCertificates& certificates(TestCertificates::Server kind) {
    static std::map<TestCertificates::Server, TestCertificates> made;
    return made.try_emplace(kind, kind).first->second;
}

QSslConfiguration configurationOf(const Fault& fault) {
    QSslConfiguration configuration = certificates(fault.certificate).serverConfiguration();
    if (!fault.tlsVersion.isEmpty())
        speakOnly(configuration, fault.tlsVersion);
    if (fault.wantsCertificate)
        configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    return configuration;
}

void openTunnel(QTcpSocket& connection) {
    connection.write("HTTP/1.1 200 Connection established\r\n\r\n");
    static_cast<QSslSocket&>(connection).startServerEncryption();
}

} // namespace

FaultServer::FaultServer(const Fault& fault) {
    if (fault.door == Door::Closed) {
        m_closed.bind(QHostAddress::LocalHost);
        return;
    }
    const Fault well = isWell();
    const auto script = [this, fault, well](QTcpSocket& connection, const QByteArray& request) {
        if (fault.door == Door::Tunnel && request.startsWith("CONNECT"))
            openTunnel(connection);
        else
            (m_isWell ? well : fault).script(connection, request);
    };
    auto listener = makeListener(fault);
    m_listener = listener.get();
    m_server = std::make_unique<ScriptedServer>(script, std::move(listener));
    m_server->setGreeting(fault.greeting);
}

quint16 FaultServer::port() const {
    return m_server ? m_server->port() : m_closed.localPort();
}

int FaultServer::connectionCount() const {
    if (const auto* const encrypted = dynamic_cast<const Counting<QSslServer>*>(m_listener))
        return encrypted->count;
    return m_server ? m_server->connectionCount() : 0;
}

int FaultServer::requestCount() const {
    return m_server ? int(m_server->requests().size()) : 0;
}

void FaultServer::recover() {
    m_isWell = true;
    if (m_server)
        m_server->setGreeting({});
}

std::unique_ptr<QTcpServer> FaultServer::makeListener(const Fault& fault) {
    if (fault.door == Door::Plain)
        return std::make_unique<QTcpServer>();
    m_authorityFile = certificates(fault.certificate).authorityFile();
    if (fault.door == Door::Tunnel)
        return std::make_unique<TunnelListener>(configurationOf(fault));
    auto listener = std::make_unique<Counting<QSslServer>>();
    listener->setSslConfiguration(configurationOf(fault));
    return listener;
}

} // namespace lumora::tests
