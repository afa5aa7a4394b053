#include "support/ScriptedServer.h"

#include <QHostAddress>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

// The length of the first whole request in `bytes`; 0 while it has not all come.
qsizetype wholeRequestLength(const QByteArray& bytes) {
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return 0;
    qsizetype bodyLength = 0;
    const QByteArray head = bytes.left(headEnd).toLower();
    const QByteArray field("\r\ncontent-length:");
    if (const qsizetype at = head.indexOf(field); at >= 0) {
        const qsizetype start = at + field.size();
        bodyLength = head.mid(start, head.indexOf('\r', start) - start).trimmed().toLongLong();
    }
    const qsizetype length = headEnd + 4 + bodyLength;
    return bytes.size() >= length ? length : 0;
}

} // namespace

ScriptedServer::ScriptedServer(Script script, std::unique_ptr<QTcpServer> listener, quint16 port)
    : m_script(std::move(script))
    , m_listener(listener ? std::move(listener) : std::make_unique<QTcpServer>()) {
    connect(
        m_listener.get(), &QTcpServer::pendingConnectionAvailable, this,
        &ScriptedServer::acceptAll);
    if (!m_listener->listen(QHostAddress::LocalHost, port))
        throw std::runtime_error("no loopback port");
}

ScriptedServer::~ScriptedServer() {
    const auto connections = m_unread.keys();
    for (QTcpSocket* connection : connections)
        connection->disconnect(this);
}

QUrl ScriptedServer::url(const QString& path, const QString& scheme) const {
    return QUrl(u"%1://127.0.0.1:%2%3"_s.arg(scheme).arg(port()).arg(path));
}

QByteArray ScriptedServer::answer(
    const QByteArray& status, const QByteArray& body, const QByteArray& headers) {
    const QByteArray ending = headers.contains("Connection:") ? "" : "Connection: close\r\n";
    return "HTTP/1.1 " + status + "\r\n" + headers + ending +
           "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

ScriptedServer::Script ScriptedServer::always(const QByteArray& bytes) {
    return [bytes](QTcpSocket& connection, const QByteArray&) {
        connection.write(bytes);
        connection.disconnectFromHost();
    };
}

void ScriptedServer::acceptAll() {
    while (QTcpSocket* const connection = m_listener->nextPendingConnection()) {
        ++m_connectionCount;
        m_unread.insert(connection, {});
        connect(
            connection, &QTcpSocket::readyRead, this, [this, connection] { read(*connection); });
        connect(connection, &QTcpSocket::disconnected, this, [this, connection] {
            m_unread.remove(connection);
            connection->deleteLater();
        });
        if (m_greeting)
            m_greeting(*connection);
        read(*connection);
    }
}

void ScriptedServer::read(QTcpSocket& connection) {
    // Greeting and script may close the connection, and then there is nothing left to read.
    if (m_unread.contains(&connection))
        m_unread[&connection] += connection.readAll();
    while (m_unread.contains(&connection)) {
        QByteArray& unread = m_unread[&connection];
        const qsizetype length = wholeRequestLength(unread);
        if (length == 0)
            return;
        const QByteArray request = unread.left(length);
        unread.remove(0, length);
        m_requests += request;
        m_script(connection, request);
    }
}

std::optional<QByteArray> header(const QByteArray& request, const QByteArray& name) {
    const QByteArrayList lines = request.left(request.indexOf("\r\n\r\n")).split('\n');
    for (const QByteArray& line : lines) {
        if (line.toLower().startsWith(name.toLower() + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return std::nullopt;
}

} // namespace lumora::tests
